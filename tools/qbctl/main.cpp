// qbctl: every operation of the library, for people and scripts.
#include "qbctl/command_line.h"
#include "qbctl/render.h"

#include <cerrno>
#include <cstring>
#include <iostream>

using namespace qbctl;

namespace
{

int complain(const std::string &text, int status)
{
    std::cout.exceptions(std::ios::goodbit);
    std::cout.flush();
    std::cerr << "qbctl: " << escape_controls(text) << '\n';
    return status;
}

} // namespace

int main(int argc, char **argv)
{
    std::cout.exceptions(std::ios::badbit);
    std::cerr.tie(nullptr); // or what goes there would fail with output that cannot be written
    try {
        CommandLine().run(argc, argv);
        std::cout.flush();
        return EXIT_SUCCESS;
    } catch (const qbobj_json::BadInput &error) {
        return complain(error.what(), exit_usage);
    } catch (const Failed &error) {
        return complain(error.what(), error.status());
    } catch (const std::ios::failure &) {
        return complain(std::string("cannot write the output: ") + std::strerror(errno), exit_failed);
    } catch (const std::exception &error) {
        return complain(error.what(), exit_failed);
    }
}
