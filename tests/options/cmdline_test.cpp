#include "options/cmdline.h"

#include <initializer_list>

#include <gtest/gtest.h>

#include "base/fatal.h"
#include "store/strings.h"
#include "tests/support/optionmodule.h"
#include "tests/support/runtool.h"

namespace {

constexpr const char *usageText[] = {"How to use it", nullptr};

class CommandLine : public ::testing::Test {
protected:
    CommandLine() {
        first_ = makeOptionModule("", "", 0);
        cMP = first_;
        backendUsage = usageText;
    }

    /* Runs a pass with these arguments; an argument that begins "+" names a file of the case. */
    template <typename Pass>
    void withArguments(const std::vector<std::string> &arguments, Pass pass) {
        std::vector<std::string> all = {"velmo"};
        for (const std::string &argument : arguments)
            all.push_back(argument.size() > 1 && argument[0] == '+' && argument[1] != '/'
                              ? "+" + dir_.path(argument.substr(1))
                              : argument);
        std::vector<char *> argv;
        for (std::string &argument : all)
            argv.push_back(argument.data());
        pass(static_cast<int>(argv.size()), argv.data());
    }

    /* File prefixes of the modules that the first pass finds. */
    std::vector<std::string> firstPass(const std::vector<std::string> &arguments) {
        ::testing::internal::CaptureStderr();
        withArguments(arguments, parseCmdLineParams);
        messages_ = ::testing::internal::GetCapturedStderr();
        std::vector<std::string> prefixes;
        for (const auto &module : modRecList.records)
            prefixes.push_back(module->filePrefix);
        return prefixes;
    }

    /* What the second pass stores: each option with its kind in front. */
    std::vector<std::string> secondPass(const std::vector<std::string> &arguments) {
        TedRange range;
        kinds_ = 0;
        ::testing::internal::CaptureStderr();
        withArguments(arguments, [&](int argc, char **argv) {
            parseCmdLineOptions(argc, argv, &kinds_, &range);
        });
        messages_ = ::testing::internal::GetCapturedStderr();
        std::vector<std::string> stored;
        for (RecNr nr = range.first; nr != 0 && nr <= range.last; ++nr) {
            const TedRec &record = first_->tedRecs[static_cast<std::size_t>(nr) - 1];
            stored.push_back(std::to_string(record.tedKind) + getStri(first_, record.tedText));
        }
        return stored;
    }

    /* The first pass ends with the usage text after `message`. */
    void expectUsage(const std::vector<std::string> &arguments, const std::string &message) {
        EXPECT_EXIT(withArguments(arguments, parseCmdLineParams), ::testing::ExitedWithCode(1),
                    "^" + message + "How to use it\n$")
            << ::testing::PrintToString(arguments);
    }

    using List = std::vector<std::string>;
    ModRec *first_ = nullptr;
    WorkDir dir_;
    std::string messages_;
    unsigned kinds_ = 0;
};

TEST_F(CommandLine, ModulesAndWhereTheyAre) {
    dir_.write("o",
               "  b.stx \n-S=Other\n# c\n-- d\n--e\n*f\n_g-h\n-END-OF-OPTIONS\nlast\n\n-X=y\n7\n");
    EXPECT_EQ(firstPass({"a", "-s=Trees", "+o", "-unknown", "a"}),
              (List{"a", "b", "_g-h", "last", "7", "a"}));
    EXPECT_EQ(messages_, "");
    EXPECT_EQ(stxDir, "Other/");
    EXPECT_EQ(modRecList.namedCount, 6u);
    EXPECT_EQ(modRecList.records[1]->genPrefix, "b");
    EXPECT_EQ(modRecList.records[5]->options->prefixLength, 5);
}

TEST_F(CommandLine, PrefixLengthCountsUpToTheFirstModule) {
    EXPECT_EQ(firstPass({"-prefixlen=3", "abcd.stx", "-PREFIXLEN=40", "abcd", "abc"}),
              (List{"abc", "abc", "abc"}));
    const std::string warning = "\nWARNING : File prefix 'abcd' longer than 3 characters.\n"
                                "          Truncating it to 3 characters.\n"
                                "          Check value of the PREFIXLEN option.\n";
    EXPECT_EQ(messages_, warning + warning);
    EXPECT_EQ(modRecList.records[2]->options->prefixLength, 3);
}

TEST_F(CommandLine, WrongArgumentsEndWithTheUsageText) {
    expectUsage({}, "");
    expectUsage({"-S=x"}, "");
    expectUsage({"x", "-S="}, "\nWARNING : Argument ignored: -S=\n");
    expectUsage({"-PREFIXLEN=33", "x"}, "\nWARNING : Argument ignored: -PREFIXLEN=33\n");
    expectUsage({"a b"}, "\nWARNING : Argument ignored: a b\n");
    for (const char *name : {"a.b", "../b", "", ".stx"})
        expectUsage({"good", name}, "\nERROR : Invalid file prefix: " + std::string(name) + "\n");
    dir_.write("o", "-S=\nmo d\n");
    const std::string file = dir_.path("o");
    expectUsage({"x", "+o"},
                "\nWARNING : Argument ignored: S=\n          In option file  : " + file +
                    "\n\nWARNING : Argument ignored: mo d\n          In option file  : " + file +
                    "\n");
}

TEST_F(CommandLine, OptionFilesThatCannotBeRead) {
    EXPECT_EXIT(withArguments({"+"}, parseCmdLineParams), ::testing::ExitedWithCode(2),
                "Can not open file for reading\n +.No option file name specified");
    EXPECT_EXIT(withArguments({"+missing"}, parseCmdLineParams), ::testing::ExitedWithCode(2),
                "Can not open file for reading\n +.*/missing");
    /* A directory opens and can't be read: the first pass lets that go, the second doesn't. */
    dir_.makeDir("sub");
    EXPECT_EQ(firstPass({"x", "+sub"}), List{"x"});
    const auto pass = [](int argc, char **argv) {
        unsigned kinds = 0;
        TedRange range;
        parseCmdLineOptions(argc, argv, &kinds, &range);
    };
    EXPECT_EXIT(withArguments({"+sub"}, pass), ::testing::ExitedWithCode(2),
                "Can not read from file\n +.*/sub\n");
}

TEST_F(CommandLine, OptionsAreStoredForTheModule) {
    EXPECT_EQ(secondPass({"a", "-verbose=Quiet", "-x y=1", "-", "-a\tb", "b"}),
              (List{"2-VERBOSE=Quiet", "2-X Y=1", "2-", "0-A"}));
    EXPECT_EQ(kinds_, 5u);
    EXPECT_EQ(secondPass({"-" + std::string(600, 'x')}), List{"2-" + std::string(511, 'X')});
}

TEST_F(CommandLine, LinesOfOptionFiles) {
    dir_.write("o",
               "a\n7b\n_c\n# x\n// x\n/* x */\n*/\n(* x\n*) x\n$ x\n-- x\n  -d=e f  \n\n!x\n<y z\n"
               "-end-of-optionsX\n-g\n");
    EXPECT_EQ(secondPass({"+o"}), (List{"2-d=e f", "0!x", "0<y"}));
    EXPECT_EQ(messages_, "");
}

TEST_F(CommandLine, ScopeLinesAreStoredAndCheckedForBalance) {
    dir_.write("o", "-End-Scope\n-begin-scope=a\n-BEGIN-SCOPE=b\n-x=1\n");
    EXPECT_EQ(secondPass({"+o"}),
              (List{"2-End-Scope", "2-begin-scope=a", "2-BEGIN-SCOPE=b", "2-x=1"}));
    const std::string file = ": option file " + dir_.path("o") + "\n";
    EXPECT_EQ(messages_, "\nWARNING : Unexpected -END-SCOPE" + file +
                             "\nWARNING : Unexpected -BEGIN-SCOPE" + file +
                             "\nWARNING : -END-SCOPE expected" + file);
    dir_.write("o", "-BEGIN-SCOPE=a\n-END-SCOPE\n");
    secondPass({"+o"});
    EXPECT_EQ(messages_, "");
}

TEST_F(CommandLine, LinesOfAnyLengthAndAnyBytes) {
    /* 511 characters of "-x..." come first, the rest is a line of its own. */
    dir_.write("o", "-" + std::string(510, 'x') + "-tail=1\n" + std::string("-a\0b\n-c\r\n", 9) +
                        "-\xff\xfe=1\n\x01\x02");
    EXPECT_EQ(secondPass({"+o"}),
              (List{"2-" + std::string(510, 'x'), "2-tail=1", "2-a", "2-c", "0-", "0"}));
    dir_.write("o", std::string(100000, 'n') + "\n" + std::string(3000, '\0'));
    EXPECT_EQ(secondPass({"+o"}), List{});
}

} // namespace
