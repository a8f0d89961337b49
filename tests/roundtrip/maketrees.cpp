#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "examples/modules.h"
#include "tests/roundtrip/frames.h"

/* maketrees_all TREE NEW-TREE [OPTION ...]: a copy of a tree with general options.
   maketrees_all DIRECTORY [OPTION ...]: the trees of the example modules with general options,
   where every type that is not skipped is an entry type, so that a program can go through all of
   them by their entry tables. Modules whose C names would meet get a prefix. */

namespace {

constexpr int MORLA_ENTRY = 1 << 6;

/* No function can be written for a type that C has no form for; an application that keeps
   components in homes has none for these either. */
constexpr std::string_view withoutForm[] = {"Presented", "Picked", "Any_Text", "Open_Size"};
constexpr std::string_view withoutHome[] = {"Big_Count", "Framed"};

template <std::size_t N> bool isOne(const std::string_view (&names)[N], std::string_view name) {
    return std::find(names, names + N, name) != names + N;
}

void enterAllTypes(TreeWriter &w, bool withHomes) {
    for (auto &[name, nr] : w.typeNames) {
        const TypeNode type = {&w, nr};
        if (isOne(withoutForm, name))
            type.hidden();
        else if (type->skipInWalk != 0)
            continue;
        else if (!withHomes)
            type.entry(ENTRY_ALL_FUNCTIONS);
        else if (!isOne(withoutHome, name))
            type.entry(ENTRY_ALL_FUNCTIONS | MORLA_ENTRY);
        else
            type->entryFlags = 0;
    }
}

int copyTree(const char *from, const char *to, char **options, int nrOfOptions) {
    std::ifstream in(from, std::ios::binary);
    std::string file{std::istreambuf_iterator<char>(in), {}};
    for (int i = 0; i < nrOfOptions; ++i)
        if (!addModuleOption(file, options[i]))
            return 1;
    std::ofstream out(to, std::ios::binary);
    return out << file ? 0 : 1;
}

} // namespace

int main(int argc, char **argv) {
    if (argc < 2) {
        std::fputs("usage: maketrees_all DIRECTORY|TREE NEW-TREE [OPTION ...]\n", stderr);
        return 1;
    }
    if (argc > 2 && std::string_view(argv[1]).ends_with(".stx"))
        return copyTree(argv[1], argv[2], argv + 3, argc - 3);
    TreeWriter basic("Basic_Forms", "basic"), stock("Stock_Keeping", "stock");
    TreeWriter shop("Shop_Orders", "shop"), forms("All_Forms", "forms");
    TreeWriter value("Value_Forms", "value"), desk("Library_Desk", "desk");
    TreeWriter frames("Kept_Values", "kept");
    shop.option("-TPREF=Shop");
    value.option("-TPREF=Val");
    desk.option("-TPREF=Desk");
    frames.option("-TPREF=Kept");
    makeBasic(basic);
    makeStock(stock);
    makeShop(shop, stock);
    makeForms(forms, stock);
    makeValue(value, stock);
    makeOperations(desk);
    makeFrames(frames);
    const std::pair<TreeWriter *, const char *> all[] = {
        {&basic, "basic"}, {&stock, "stock"}, {&shop, "shop"},  {&forms, "forms"},
        {&value, "value"}, {&desk, "desk"},   {&frames, "kept"}};
    bool withHomes = false;
    for (int i = 2; i < argc; ++i)
        withHomes = withHomes || std::string_view(argv[i]).find("MORLA") != std::string_view::npos;
    for (auto [tree, name] : all) {
        for (int i = 2; i < argc; ++i)
            tree->option(argv[i]);
        for (const char *option : {"-TAB=1", "-TABF=no", "-COD=1:1", "-TST=1:1", "-VERBOSE=QUIET"})
            tree->option(option);
        if (withHomes) {
            tree->option("-TABO=no");
            tree->backendOption("-TAB-MORLA-PARAM=no");
        }
        enterAllTypes(*tree, withHomes);
        if (!tree->save(std::string(argv[1]) + '/' + name + ".stx")) {
            std::fprintf(stderr, "maketrees_all: %s failed\n", name);
            return 1;
        }
    }
    return 0;
}
