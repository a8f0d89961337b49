#include <gtest/gtest.h>

#include "examples/modules.h"
#include "tests/support/gencase.h"

/* Defines and tables of the example modules as a C program uses them. */

namespace {

struct Examples {
    explicit Examples(const std::vector<const char *> &options) {
        for (TreeWriter *tree : all())
            for (const char *option : options)
                tree->option(option);
        makeBasic(basic);
        makeStock(stock);
        makeShop(shop, stock);
        makeForms(forms, stock);
        makeValue(value, stock);
    }
    std::vector<TreeWriter *> all() { return {&basic, &stock, &shop, &forms, &value}; }
    TreeWriter basic{"Basic_Forms", "basic"}, stock{"Stock_Keeping", "stock"};
    TreeWriter shop{"Shop_Orders", "shop"}, forms{"All_Forms", "forms"};
    TreeWriter value{"Value_Forms", "value"};
};

const std::vector<std::string> names = {"basic", "stock", "shop", "forms", "value"};

/* Saves the trees and runs the tool on all of them. */
void generate(const WorkDir &dir, Examples &examples) {
    for (std::size_t i = 0; i < names.size(); ++i)
        ASSERT_TRUE(examples.all()[i]->save(dir.path(names[i] + ".stx")));
    std::vector<std::string> arguments = {"-VERBOSE=quiet"};
    arguments.insert(arguments.end(), names.begin(), names.end());
    const ProgramRun run = runVelmo(dir, arguments);
    ASSERT_EQ(run.status, 0) << run.err;
}

const std::vector<const char *> allDefines = {"-TAB=yes", "-TST=1:1", "-CDEFS=yes", "-TDEFS=yes"};

} // namespace

TEST(UserTables, DefinesAndTablesOfExamplesCompile) {
    WorkDir dir;
    Examples examples(allDefines);
    ASSERT_NO_FATAL_FAILURE(generate(dir, examples));
    std::vector<std::string> sources;
    for (const std::string &name : names) {
        sources.push_back(name + "uses.c");
        dir.write(sources.back(), usesOfDefines(dir, name));
        if (!dir.has(name + ".tab"))
            continue;
        sources.push_back(name + "row.c");
        dir.write(sources.back(), "#include \"" + name +
                                      ".tab\"\n"
                                      "const ENTRYDESCR *row(int n);\n"
                                      "const ENTRYDESCR *row(int n) { return " +
                                      name + "EntryDescr + n; }\n");
    }
    EXPECT_EQ(sources.size(), 9u); /* all but one module have entries */
    EXPECT_EQ(compilerMessages(dir, sources), "");
}

TEST(UserTables, ExportedTablesOfExamplesCompile) {
    WorkDir dir;
    std::vector<const char *> options = allDefines;
    options.push_back("-TABF=yes");
    Examples examples(options);
    ASSERT_NO_FATAL_FAILURE(generate(dir, examples));
    EXPECT_EQ(compilerMessages(
                  dir, {"basictab.c", "shoptab.c", "formstab.c", "valuetab.c", "valuetab.ext"}),
              "");
}

/* A program sets, tests and clears components by macros, names numbers, values and rows by defines,
   and reaches a type by its row. */
TEST(UserTables, ProgramUsesMacrosAndRows) {
    WorkDir dir;
    Examples examples({"-TAB=yes", "-TABF=yes", "-TDEFS=yes", "-CDEFS=yes"});
    examples.value.backendOption("-TAB-CODFUNC=put:get:own.h");
    ASSERT_NO_FATAL_FAILURE(generate(dir, examples));
    dir.write("valueown.h", "void putDigest(void), getDigest(void), putWord(void), getWord(void);\n"
                            "void putMarks(void), getMarks(void), getLimits(void);\n"
                            "int putLimits(const void *limits);\n");
    dir.write("user.c", R"(#include <stdio.h>
#include <string.h>
#include "value.typ"
#include "value.def"
#include "valuetab.ext"
#include "valueown.h"

void putDigest(void) {}
void getDigest(void) {}
void putWord(void) {}
void getWord(void) {}
void putMarks(void) {}
void getMarks(void) {}
void getLimits(void) {}
int putLimits(const void *limits) { return ((const Limits *)limits)->percent; }

static int failures;
#define CHECK(what) ((what) ? (void)0 : (void)(++failures, printf("%s\n", #what)))

int main(void)
{
  Limits limits;
  ENTRYDESCR *row;
  memset(&limits, 0, sizeof limits);
  CHECK(!is_holes_Limits(&limits) && !is_word_Limits(&limits));
  set_word_Limits(&limits);
  set_amount_Limits(&limits);
  CHECK(is_word_Limits(&limits) && is_amount_Limits(&limits) && !is_holes_Limits(&limits));
  rem_word_Limits(&limits);
  CHECK(!is_word_Limits(&limits) && is_amount_Limits(&limits));
  CHECK(limits.compmask == BIT(amount_Limits));
  limits.percent = half;
  limits.light = stop;
  CHECK(limits.percent == 50 && limits.light == red_Light);
  CHECK(strcmp(product, "{1 2 840 113549 7}") == 0);

  CHECK(asnvalueEntryDescr(valueEntryDescr_cnt) == NULL);
  row = asnvalueEntryDescr(valueLimits);
  CHECK(row == valueEntryDescr + valueLimits && strcmp(row->name, "Limits") == 0);
  CHECK(row->type == TYP_SEQ && row->tag == TAG(TAG_UNI, TAG_PRI, 16));
  CHECK(row->size == sizeof limits && row->ask == NULL && row->print == NULL);
  CHECK(((int (*)(const void *))row->encode)(&limits) == 50);
  CHECK(valueEntryDescr[valueDigest].decode == getDigest);
  return failures;
}
)");
    EXPECT_EQ(compilerMessages(dir, {"user.c", "valuetab.c"}), "");
    const ProgramRun build = runProgram(
        dir, "gcc",
        {"-std=c99", "-I" + sourceDir + "/rts", "-I.", "user.c", "valuetab.c", "-o", "user"});
    ASSERT_EQ(build.status, 0) << build.err;
    const ProgramRun user = runProgram(dir, dir.path("user"), {});
    EXPECT_EQ(user.status, 0) << user.out;
}
