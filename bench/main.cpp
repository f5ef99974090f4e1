// Measures the library and prints its figures; fails when one is over its limit.
#include "measurements.h"

#include <cstdio>
#include <exception>

int main(int argc, char **argv)
{
    using namespace qbobj_bench;
    try {
        Figures figures;
        add_share_figures(figures);
        add_new_share_figures(figures);
        add_user_figures(figures);
        add_disk_figures(figures);
        add_protocol_figures(figures);
        add_snapshot_figures(figures);
        add_start_figures(figures);
        add_new_user_figures(figures);
        add_modification_figures(figures);
        add_group_beside_figures(figures);
        add_share_beside_figures(figures);
        add_backup_figures(figures);
        add_dictionary_figures(figures);
        add_log_figures(figures);
        add_durable_figures(figures);
        add_listing_figures(figures);
        return figures.run({argv, argv + argc}) ? 0 : 1;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "qbobj_bench: %s\n", error.what());
        return 1;
    }
}
