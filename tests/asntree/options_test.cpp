#include "asntree/options.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>

#include "asntree/words.h"
#include "tests/support/optionmodule.h"

namespace {

using namespace asntree;

bool parse(std::vector<std::string> arguments, Settings &settings, std::string &message) {
    arguments.insert(arguments.begin(), "asntree");
    std::vector<char *> pointers;
    for (std::string &argument : arguments)
        pointers.push_back(argument.data());
    return parseCommandLine(static_cast<int>(pointers.size()), pointers.data(), settings, message);
}

/* The options that a tree of module M-x with prefix x stores, or the messages. */
std::string stored(const std::vector<std::string> &arguments) {
    Settings settings;
    std::string text;
    std::vector<std::string> all = arguments;
    all.emplace_back("x");
    if (!parse(all, settings, text))
        return text;
    for (const asntree::StoredOption &option : storedOptions(settings, "x", "M-x"))
        text += std::to_string(option.tedKind) + option.text + " ";
    return text;
}

TEST(AsntreeOptions, StoredInTrees) {
    installOptionHooks();
    const std::string first = "3-NAMELEN=128 ";
    const std::string last = "2-BEO=VELMO=CPLUSPLUS=YES ";
    const std::pair<std::vector<std::string>, std::string> good[] = {
        {{"-A=asn", "-S=stx", "-static-limit=9", "-merge=y:A,B-c", "-ENTRY=T"}, ""},
        {{"-int=u8", "-tname=Foo:Bar", "-//Remark", "-COD=2:1"},
         "3-INT=u8 3-TNAME=Foo:Bar 3-//Remark 3-COD=2:1 "},
        {{"-beo=velmo=entrytag=Warn", "-BEO=Other=x=y", "-COD-FUNC-PREF=q", "-VERBOSE=quiet"},
         "2-BEO=VELMO=ENTRYTAG=Warn 2-BEO=Other=x=y 2-BEO=VELMO=COD-FUNC-PREF=q "
         "2-BEO=VELMO=VERBOSE=quiet "},
        {{"-BEGIN-SCOPE=y", "-INT=8", "-BEGIN-SCOPE=z:M-x", "-TAB=1", "-TABF=1", "-END-SCOPE"},
         "3-TAB=1 3-TABF=1 "},
        {{"-PREFIX=M:x:x", "-PREFIX=N:y:z", "-ENTRY=M-x.T:1PDU", "-ENTRY=M-x.T:PDU:s"}, "?"},
        {{"-PREFIX=N:y:z", "-ENTRY=M-x.T:PDU:s", "-ENTRY=N.T:PDU:s", "-ENTRY=*:01:q"},
         "3-PREFIX=N:y:z 3-ENTRY=T:0:s "},
    };
    for (const auto &[arguments, expected] : good) {
        const std::string text = stored(arguments);
        if (expected == "?")
            EXPECT_NE(text.find("error: "), text.npos) << text;
        else
            EXPECT_TRUE(text.ends_with(first + expected + last)) << text;
    }
    EXPECT_EQ(stored({"-TAB=1", "-NAMELEN=40"}), "3-TAB=1 3-NAMELEN=40 " + last);
}

TEST(AsntreeOptions, Refused) {
    installOptionHooks();
    for (const char *option : {"-INT=7",
                               "-NAMELEN=129",
                               "-TABF=1",
                               "-FOO=1",
                               "-TNAME=foo:x",
                               "-BEO=VELMO=FOO=1",
                               "-BEO=VELMO=VERSION",
                               "-BEO=x",
                               "-PREFIX=m:x",
                               "-PREFIX=*:1",
                               "-PREFIX=*:abcdefghijklmnopq",
                               "-PREFIXLEN=33",
                               "-UNIQUE=1",
                               "-ENTRY=t",
                               "-ENTRY=",
                               "-ENTRY=T:8",
                               "-ENTRY=m.T",
                               "-ENTRY=.T",
                               "-MERGE=y",
                               "-MERGE=y:a",
                               "-S=",
                               "-STATIC-LIMIT=-1",
                               "-REAL=7",
                               "-EXT-CONSTRAINTS=SOME",
                               "-ENTRY=T:9:x",
                               "-EXTERNAL=1995",
                               "--stritc",
                               "--color=red",
                               "+/nowhere",
                               "-X",
                               "",
                               "-BEGIN-SCOPE=a::b",
                               "-PREFIX=M:abcdefghijklmnopqrstuvwxyz0123456789"}) {
        const std::string text = stored({option});
        EXPECT_TRUE(text.starts_with("asntree: error: ")) << option << ": " << text;
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1) << text;
    }
    Settings settings;
    std::string message;
    EXPECT_FALSE(parse({}, settings, message));
    EXPECT_TRUE(parse({"--help"}, settings, message));
}

TEST(AsntreeOptions, OptionFile) {
    const std::string path = testing::TempDir() + "asntree_options.opt";
    std::ofstream(path) << "# remark\r\n-- remark\r\nx\r\n  -INT=8  \r\n@M.T.c.* int=8 name=x\r\n"
                           "-BEGIN-SCOPE=y\n-REAL=32\n-END-OF-OPTIONS\n-FOO=1\nasn/y.asn\n";
    Settings settings;
    std::string message;
    ASSERT_TRUE(parse({"+" + path, "-N=16"}, settings, message)) << message;
    EXPECT_EQ(message, path + ":10: warning: -END-SCOPE is missing\n");
    EXPECT_EQ(settings.files, (std::vector<std::string>{"x", "asn/y.asn"}));
    EXPECT_EQ(moduleSettings(settings, "x", "M").intForm, VF_I8);
    EXPECT_EQ(moduleSettings(settings, "x", "M").realForm, VF_REAL64);
    EXPECT_EQ(moduleSettings(settings, "y", "M").realForm, VF_REAL32);
    EXPECT_EQ(moduleSettings(settings, "x", "M").listForm, VF_I16);
    Sources sources;
    placeOptionFiles(settings, sources);
    ASSERT_EQ(settings.directives.size(), 1u);
    EXPECT_EQ(settings.directives[0].path, (std::vector<std::string>{"M", "T", "c", "*"}));
    const Place place = settings.directives[0].wordsPlace;
    EXPECT_EQ(sources[place.file].text.substr(place.offset, 5), "int=8");
}

/* The words that count and the messages with their offsets. */
std::string wordsOf(const std::string &text) {
    Sources sources;
    Diagnostics diagnostics(sources);
    addSource(sources, "x", text);
    Words words;
    readWords(text, {0, 0}, diagnostics, words);
    std::string out;
    for (const GivenWord &word : words.given)
        out += word.text + "|";
    for (const Diagnostic &message : diagnostics.list)
        out += "!" + std::to_string(message.place.offset);
    for (const auto &[place, line] : words.embed)
        out += " " + place + ":" + line;
    return out;
}

TEST(AsntreeOptions, Words) {
    const std::pair<const char *, const char *> cases[] = {
        {"entry int=u8 real=32 array=5", "entry|int=u8|real=32|array=5|"},
        {"ENTRY=pdu int=i64  int=i64 limit=5:ignore", "entry=pdu|int=i64|limit=5:ignore|"},
        {"int=octets list static=7 skip=call", "int=octets|list|static=7|skip=call|"},
        {"name=a_b prefix= conv=hu access=macros", "name=a_b|prefix=|conv=hu|access=macros|"},
        {"any=a:T any=b:M.U any=a:T", "any=a:T|any=b:M.U|"},
        {"embed=t1:\"a \"\"b\"\" = c;\" embed=P2:x",
         "embed=t1:a \"b\" = c;|embed=P2:x| T1:a \"b\" = c; P2:x"},
        {"int=8 int=16 array list save drop any=a:T any=a:U",
         "int=8|array|save|any=a:T|!6!19!29!42"},
        {"entyr int=7 int=iu8 real array=0 list=3 entry=8 entry= name=1 limit=5:x conv=UH",
         "!0!6!12!20!25!33!40!48!55!62!72"},
        {"comment=\"open embed=T3:x", "!0"},
    };
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(wordsOf(text), expected) << text;
    std::vector<std::string> steps;
    std::size_t length = 0;
    EXPECT_TRUE(readItemPath(".a.*.b-c int=8", steps, length));
    EXPECT_EQ(steps, (std::vector<std::string>{"a", "*", "b-c"}));
    EXPECT_EQ(length, 8u);
    EXPECT_TRUE(readItemPath("int=8", steps, length) && length == 0);
    EXPECT_FALSE(readItemPath(".a. int=8", steps, length));
    EXPECT_FALSE(readModulePath("M int=8", steps, length));
}

} // namespace
