// The settings of the services, read and stored all at once, on an appliance of few and of many shares and users.
#include "measurements.h"
#include "protocol_floor.h"

namespace qbobj_bench
{
namespace
{

constexpr int calls = 50; // in a run

struct Subject {
    Subject(int shares, int users) : appliance({.shares = shares, .users = users}) {}

    Appliance appliance;
    Copy library{appliance};
    Copy kept{appliance};
    ProtocolFloor floor{kept.connection};
};

qbobj_ProtocolCollection_t read_all(const Connection &connection)
{
    qbobj_ProtocolCollection_t collection{};
    qbobj_error_rec_t err{};
    check(qbobj_getProtocolCollection(connection.qbdb, connection.db, &collection, &err), err);
    return collection;
}

// All seventeen as they are read, "bonjour" first, with other values from turn to turn.
qbobj_ProtocolCollection_t turned(const Connection &connection, int turn)
{
    qbobj_ProtocolCollection_t collection = read_all(connection);
    qbobj_Protocol_t *bonjour = nullptr;
    qbobj_error_rec_t err{};
    check(qbobj_getProtocol(connection.qbdb, connection.db, protocol_id_bonjour, &bonjour, &err), err);
    bonjour->_link = collection.Protocol;
    collection.Protocol = bonjour;
    for (qbobj_Protocol_t *protocol = bonjour; protocol != nullptr; protocol = protocol->_link) {
        protocol->Enabled = turn % 2;
        if (protocol->BonjourOptions != nullptr)
            *protocol->BonjourOptions = {};
        if (protocol->SnmpOptions != nullptr)
            *protocol->SnmpOptions = {"10.0.0.0/24,pc1.office", "office", "10.0.0.7"};
        if (protocol->DaapOptions != nullptr)
            *protocol->DaapOptions = {"Music", "sing", ""};
        if (protocol->HttpsOptions != nullptr)
            protocol->HttpsOptions->SslKeyHost = turn % 2 == 0 ? "nas.office" : "nas.example.org";
    }
    return collection;
}

void store_all(const Connection &connection, qbobj_ProtocolCollection_t &collection)
{
    qbobj_error_rec_t err{};
    check(qbobj_setProtocolCollection(connection.qbdb, connection.db, &collection, &err), err);
}

void compare(Subject &subject)
{
    qbobj_ProtocolCollection_t changed = turned(subject.library.connection, 1);
    subject.floor.store_all(changed);
    store_all(subject.library.connection, changed);
    require_equal("setProtocolCollection", subject.kept.connection.content(),
                  subject.library.connection.content());
    qbobj_ProtocolCollection_t kept{};
    subject.floor.read_all(kept);
    require_same_records("ProtocolCollection", kept, read_all(subject.library.connection));
}

// Calls `work` with the number of the turn.
template <class Work>
void measure(Figures &figures, const std::string &name, const Connection &connection, Work work)
{
    figures.measure(name, timed(connection, [work] {
                        for (int turn = 0; turn < calls; turn++)
                            work(turn);
                    }));
}

void measure(Figures &figures, const std::shared_ptr<Subject> &subject, const std::string &suffix)
{
    const Connection &library = subject->library.connection;
    const Connection &kept = subject->kept.connection;
    // In the memory of a connection that no run gives back.
    const auto source = figures.keep<Copy>(subject->appliance);
    const auto turns = figures.keep<std::array<qbobj_ProtocolCollection_t, 2>>();
    *turns = {turned(source->connection, 0), turned(source->connection, 1)};
    measure(figures, "getProtocolCollection/library" + suffix, library,
            [subject](int) { read_all(subject->library.connection); });
    measure(figures, "getProtocolCollection/kept" + suffix, kept, [subject](int) {
        qbobj_ProtocolCollection_t collection{};
        subject->floor.read_all(collection);
    });
    measure(figures, "setProtocolCollection/library" + suffix, library,
            [subject, turns](int turn) { store_all(subject->library.connection, (*turns)[turn % 2]); });
    measure(figures, "setProtocolCollection/kept" + suffix, kept,
            [subject, turns](int turn) { subject->floor.store_all((*turns)[turn % 2]); });
}

} // namespace

void add_protocol_figures(Figures &figures)
{
    const auto few = figures.keep<Subject>(10, 10);
    const auto many = figures.keep<Subject>(2000, 20000);
    compare(*few);
    measure(figures, few, "/few");
    measure(figures, many, "/many");
    for (const auto &[operation, limit] :
         {std::pair<std::string, double>{"getProtocolCollection", 1.5}, {"setProtocolCollection", 1.7}}) {
        figures.ratio_at_most(operation + "-to-kept-statements", operation + "/library/few",
                              operation + "/kept/few", limit);
        figures.ratio_at_most(operation + "-of-many-shares-to-of-few", operation + "/library/many",
                              operation + "/library/few", 1.2);
    }
}

} // namespace qbobj_bench
