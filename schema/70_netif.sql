-- Network interfaces.

-- Address settings by interface. Owner: src/netif.
CREATE TABLE network_if (
    name TEXT NOT NULL PRIMARY KEY,
    mac TEXT,
    protocol TEXT,
    ip TEXT,
    dns1 TEXT,
    dns2 TEXT,
    gateway TEXT,
    subnet TEXT
);
