#include <cctype>
#include <cstdio>
#include <fstream>

#include "examples/modules.h"

/* Writes the syntax trees of the example modules: maketrees ASN1-DIRECTORY TREE-DIRECTORY. The
   bytes depend on nothing but the modules, so that the trees can stand beside them. */

namespace {

/* Sets the lines of definitions to those at which the ASN.1 text has them. */
bool setLines(TreeWriter &w, const std::string &path) {
    std::ifstream text(path);
    std::string line;
    for (int number = 1; std::getline(text, line); ++number) {
        std::string name;
        for (char c : line) {
            if (std::isalnum(static_cast<unsigned char>(c)) == 0 && c != '-')
                break;
            name += c == '-' ? '_' : c;
        }
        if (line.find("::=") == std::string::npos)
            continue;
        if (TypeNode type = w.findType(name); type.nr != 0)
            type.line(number);
        else if (ValueNode value = w.findValue(name); value.nr != 0)
            value.line(number);
    }
    return text.eof();
}

bool write(TreeWriter &w, const std::string &source, const std::string &directory,
           const std::string &name) {
    w.source("", name + ".asn");
    if (setLines(w, source + "/" + name + ".asn") && w.save(directory + "/" + name + ".stx"))
        return true;
    std::fprintf(stderr, "maketrees: %s failed\n", name.c_str());
    return false;
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 3) {
        std::fputs("usage: maketrees ASN1-DIRECTORY TREE-DIRECTORY\n", stderr);
        return 1;
    }
    TreeWriter basic("Basic_Forms", "basic"), stock("Stock_Keeping", "stock");
    TreeWriter shop("Shop_Orders", "shop"), forms("All_Forms", "forms");
    TreeWriter value("Value_Forms", "value");
    makeBasic(basic);
    makeStock(stock);
    makeShop(shop, stock);
    makeForms(forms, stock);
    makeValue(value, stock);
    bool done = true;
    const std::pair<TreeWriter *, const char *> all[] = {{&basic, "basic"},
                                                         {&stock, "stock"},
                                                         {&shop, "shop"},
                                                         {&forms, "forms"},
                                                         {&value, "value"}};
    for (auto [tree, name] : all)
        done = write(*tree, argv[1], argv[2], name) && done;
    return done ? 0 : 1;
}
