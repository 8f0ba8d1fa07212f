#include "cli/commands.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    try {
        return ks::cli::run(std::vector<std::string>(argv + 1, argv + argc), std::cout, std::cerr);
    } catch (const std::exception& error) {
        std::cerr << "kscfg: " << error.what() << '\n';
        return 1;
    }
}
