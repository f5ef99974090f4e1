-- Statements of the library that the database must refuse: callers rely on these operations failing.
DELETE FROM `$registry` SET value=NULL WHERE key='x'
SELECT G.id,G.gname,CASE WHEN U.rid IS NULL THEN 0 ELSE 1 END FROM `$group` G WHERE G.is_privileged=0 AND G.gname<>'nogroup' AND G.gname<>'guest' AND G.id=1 ORDER BY G.gname COLLATE NOCASE
UPDATE _ups_config SET enabled=1,name='x',description='',remote_username='x',remote_password
