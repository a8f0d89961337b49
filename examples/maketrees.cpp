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

/* A module, the name of its text and that of its tree. */
struct Example {
    TreeWriter &tree;
    std::string text;
    std::string name;
};

bool write(const Example &example, const std::string &source, const std::string &directory) {
    const std::string file = example.text + ".asn";
    example.tree.source("", file);
    if (setLines(example.tree, source + "/" + file) &&
        example.tree.save(directory + "/" + example.name + ".stx"))
        return true;
    std::fprintf(stderr, "maketrees: %s failed\n", example.name.c_str());
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
    TreeWriter operations("Library_Desk", "desk");
    makeBasic(basic);
    makeStock(stock);
    makeShop(shop, stock);
    makeForms(forms, stock);
    makeValue(value, stock);
    makeOperations(operations);
    bool done = true;
    const Example all[] = {{basic, "basic", "basic"}, {stock, "stock", "stock"},
                           {shop, "shop", "shop"},    {forms, "forms", "forms"},
                           {value, "value", "value"}, {operations, "operations", "desk"}};
    for (const Example &example : all)
        done = write(example, argv[1], argv[2]) && done;
    return done ? 0 : 1;
}
