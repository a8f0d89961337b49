#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>

#include "tests/support/runtool.h"

/* The program of docs/generated-code.md that asks for a value, encodes, decodes and prints it. */

namespace {

/* The lines of the page from `first` to the end of the program. */
std::string programInPage(const std::string &first) {
    std::ifstream page(sourceDir + "/docs/generated-code.md");
    std::string program;
    for (std::string line; std::getline(page, line);) {
        if (program.empty() && line != first)
            continue;
        if (line == "```")
            break;
        program += line + '\n';
    }
    return program;
}

TEST(FourKinds, AskEncodeDecodeAndPrintOneValue) {
    WorkDir dir;
    const std::string basic = sourceDir + "/examples/basic.asn";
    ASSERT_EQ(runProgram(dir, asntreeProgram, {"-COD=1:1", "-TST=1:1", basic}).status, 0);
    ASSERT_EQ(runVelmo(dir, {"basic"}).status, 0);
    dir.write("program.c", programInPage("#include \"asnapi.h\""));
    const std::string rts = sourceDir + "/rts";
    const ProgramRun compiler =
        runProgram(dir, "sh",
                   {"-c", "gcc -std=c99 -Wall -Wextra -I. -I'" + rts +
                              "' -o program program.c basiccod.c basictst.c '" + rts + "'/*.c"});
    ASSERT_EQ(compiler.status, 0) << compiler.err;
    EXPECT_EQ(compiler.err, "");

    dir.write("answers", "{ id: 7 name: \"abc\" ok: TRUE }\n");
    const ProgramRun run = runProgram(dir, "sh", {"-c", "./program < answers"});
    EXPECT_EQ(run.status, 0);
    const std::string printed = "Msg: {\n  id: 7\n  name: \"abc\"\n  ok: TRUE\n}\n";
    EXPECT_TRUE(run.out.ends_with(printed)) << run.out;

    dir.write("answers", "{ id: 7 name: \"abc\"");
    const ProgramRun cut = runProgram(dir, "sh", {"-c", "./program < answers"});
    EXPECT_NE(cut.status, 0);
    EXPECT_TRUE(cut.out.ends_with("INPUT_FAIL at Msg.ok\n")) << cut.out;
}

} // namespace
