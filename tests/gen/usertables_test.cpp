#include <gtest/gtest.h>

#include "tests/support/gencase.h"

/* Defines and tables of an example module as a C program uses them. */

/* A program sets, tests and clears components by macros, names numbers, values and rows by defines,
   and reaches a type by its row. */
TEST(UserTables, ProgramUsesMacrosAndRows) {
    WorkDir dir;
    const ProgramRun compiled = runProgram(
        dir, asntreeProgram,
        {"-A=" + sourceDir + "/examples", "value", "-BEGIN-SCOPE=value", "-TAB=yes", "-TABF=yes",
         "-TDEFS=yes", "-CDEFS=yes", "-BEO=VELMO=TAB-CODFUNC=put:get:own.h", "-END-SCOPE"});
    ASSERT_EQ(compiled.status, 0) << compiled.err;
    const ProgramRun run = runVelmo(dir, {"-VERBOSE=quiet", "stock", "value"});
    ASSERT_EQ(run.status, 0) << run.err;
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
