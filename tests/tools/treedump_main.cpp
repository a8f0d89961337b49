#include <cstdio>

#include "tests/support/treedump.h"

/* Lists the syntax trees named on the command line. */
int main(int argc, char **argv) {
    for (int i = 1; i < argc; ++i) {
        std::FILE *stream = std::fopen(argv[i], "rb");
        if (stream == nullptr) {
            std::perror(argv[i]);
            return 1;
        }
        std::string file;
        for (int c = std::getc(stream); c != EOF; c = std::getc(stream))
            file.push_back(static_cast<char>(c));
        std::fclose(stream);
        std::fputs(dumpTree(file).c_str(), stdout);
    }
    return 0;
}
