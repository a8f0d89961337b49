#pragma once

#include <string>
#include <vector>

namespace tool {

struct Options {
    std::vector<std::string> files;    /* ASN.1 text */
    std::string output;                /* the program; empty: named after the first file */
    std::string keep;                  /* directory that keeps what is made on the way */
    std::string compiler;              /* of C */
    std::vector<std::string> compiled; /* options for asntree, those of velmo among them */
    bool verbose = false;
    bool help = false;
    bool version = false;
};

/* Reads the command line; false, with a message on the standard error, if it is wrong. */
bool parseCommandLine(int argc, char **argv, Options &options);

const char *usageText();
std::string versionText();

/* "dir/ldap.asn1" gives "ldap". */
std::string stemOf(const std::string &path);

} // namespace tool
