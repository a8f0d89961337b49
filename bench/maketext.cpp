#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

/* Writes ASN.1 text to measure the compiler with: maketext LINES FILE, one module of so many lines
   with types, values, classes, objects and sets mixed; or maketext modules NUMBER DIRECTORY, small
   modules of which each imports from the two before it. */

namespace {

/* A block of definitions that refer to one another and to the block before. */
constexpr const char *block =
    "Record%1$ld ::= [APPLICATION %1$ld] SEQUENCE {\n"
    "    identifier  [0] INTEGER (0..65535),\n"
    "    label       [1] IA5String (SIZE (1..32)) OPTIONAL,\n"
    "    state       [2] State%1$ld DEFAULT idle,\n"
    "    amounts     [3] SEQUENCE SIZE (0..8) OF INTEGER (-100..100),\n"
    "    previous    [4] Record%2$ld OPTIONAL,\n"
    "    choice      [5] Choice%1$ld,\n"
    "    ...,\n"
    "    later       [6] OCTET STRING OPTIONAL\n"
    "}\n"
    "State%1$ld ::= ENUMERATED { idle(0), busy(1), blocked(2), ..., lost(3) }\n"
    "Choice%1$ld ::= CHOICE {\n"
    "    number  [0] INTEGER,\n"
    "    text    [1] UTF8String,\n"
    "    flags   [2] BIT STRING { first(0), second(1), third(2) }\n"
    "}\n"
    "limit%1$ld INTEGER ::= %1$ld\n"
    "first%1$ld Choice%1$ld ::= number : limit%1$ld\n"
    "flags%1$ld Choice%1$ld ::= flags : { first, third }\n"
    "operation%1$ld OPERATION ::= { ARGUMENT Record%1$ld RESULT Choice%1$ld CODE %1$ld }\n"
    "Operations%1$ld OPERATION ::= { operation%1$ld | operation%2$ld, ... }\n"
    "Invoke%1$ld ::= SEQUENCE {\n"
    "    code      OPERATION.&code ({Operations%1$ld}),\n"
    "    argument  OPERATION.&Argument ({Operations%1$ld} {@code})\n"
    "}\n"
    "Pair%1$ld ::= Pair { Record%1$ld, Choice%1$ld }\n";
constexpr long BLOCK_LINES = 26;

constexpr const char *head = "Large DEFINITIONS IMPLICIT TAGS ::= BEGIN\n"
                             "OPERATION ::= CLASS {\n"
                             "    &code INTEGER UNIQUE,\n"
                             "    &Argument,\n"
                             "    &Result OPTIONAL\n"
                             "} WITH SYNTAX { ARGUMENT &Argument [RESULT &Result] CODE &code }\n"
                             "Pair { First, Second } ::= SEQUENCE { a [0] First, b [1] Second }\n";

bool writeLarge(long lines, const char *path) {
    std::FILE *file = std::fopen(path, "w");
    if (file == nullptr)
        return false;
    std::fputs(head, file);
    const long blocks = lines / BLOCK_LINES + 1;
    for (long i = 0; i < blocks; ++i)
        std::fprintf(file, block, i, i == 0 ? 0 : i - 1);
    std::fputs("END\n", file);
    return std::fclose(file) == 0;
}

bool writeModule(const std::string &directory, long number) {
    const std::string path = directory + "/m" + std::to_string(number) + ".asn";
    std::FILE *file = std::fopen(path.c_str(), "w");
    if (file == nullptr)
        return false;
    std::fprintf(file, "Module-%ld DEFINITIONS AUTOMATIC TAGS ::= BEGIN\n", number);
    if (number > 1)
        std::fprintf(file, "IMPORTS Item%ld FROM Module-%ld Item%ld FROM Module-%ld;\n", number - 1,
                     number - 1, number - 2, number - 2);
    std::fprintf(file, "Item%ld ::= SEQUENCE {\n    number INTEGER (0..255)", number);
    for (long other = number - 2; number > 1 && other < number; ++other)
        std::fprintf(file, ",\n    part%ld Item%ld OPTIONAL", other, other);
    std::fputs("\n}\nEND\n", file);
    return std::fclose(file) == 0;
}

} // namespace

int main(int argc, char **argv) {
    bool done = false;
    if (argc == 3) {
        done = writeLarge(std::atol(argv[1]), argv[2]);
    } else if (argc == 4 && std::strcmp(argv[1], "modules") == 0) {
        done = true;
        for (long i = 0; done && i < std::atol(argv[2]); ++i)
            done = writeModule(argv[3], i);
    } else {
        std::fputs("usage: maketext LINES FILE | maketext modules NUMBER DIRECTORY\n", stderr);
        return 1;
    }
    if (!done)
        std::perror("maketext");
    return done ? 0 : 1;
}
