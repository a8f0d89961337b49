#include "options/naming.h"

#include <cstring>
#include <initializer_list>

#include <gtest/gtest.h>

#include "options/ketracnf.h"
#include "options/prefixopt.h"
#include "store/records.h"
#include "store/strings.h"
#include "tests/support/optionmodule.h"

namespace {

bool isGood(const char *option) {
    FixChain chain;
    const char *value = std::strchr(option, '=') + 1;
    return getFixOpt(&chain, allocateUniqStri(option), allocateUniqStri(option) + (value - option));
}

TEST(NamingOptions, Syntax) {
    for (const char *option :
         {"TNAME=Foo:Bar",   "TNAME=:Bar",  "TNAME=",           "TPREF=My-Type:a-b_c",
          "TPREF=My_Type:x", "VPREF=foo:x", "OPREF=foo:x",      "CPREF=foo:x",
          "FPREF=foo:x",     "FPREF=Foo:x", "CLNAME=FOO:x",     "VSNAME=Foo:x",
          "OSNAME=Foo:x",    "TCONV=",      "TCONV=HU",         "TCONV=u",
          "TCONV=Foo:hl",    "ENTRY=X:7",   "ENTRY=X:pdu:name", "ENTRY=X::a-b_c",
          "ENTRY=X:",        "ENTRY=",      "ENTRY=07",         "ENTRY=My_X:Sdu:"})
        EXPECT_TRUE(isGood(option)) << option;
    for (const char *option :
         {"TPREF=foo:x",  "VPREF=Foo:x",   "CPREF=1:x",       "CLNAME=foo:x",    "VSNAME=foo:x",
          "OSNAME=foo:x", "TNAME=Foo:a:b", "TNAME=a b",       "TNAME=Foo bar:x", "TNAME=Foo:a.b",
          "TCONV=UH",     "TCONV=X",       "TCONV=HUL",       "XNAME=a",         "TNAM=a",
          "ENTRY=X:8",    "ENTRY=X:XDU",   "ENTRY=X:PDU:a:b", "ENTRY=X:PDUs",    "ENTRY=X",
          "ENTRY=X:a b"})
        EXPECT_FALSE(isGood(option)) << option;
    EXPECT_TRUE(getFixOpt(nullptr, "ENTRY=PDU:a", "PDU:a")) << "without a name in front";
    /* The longest prefix selects the kind. */
    const auto kindOf = [](const char *option) {
        const NameOptPref *row = nullptr;
        return isNamingOption(option, &row) ? row->kind : 0;
    };
    EXPECT_EQ(kindOf("VSPREF=x"), KIND_VALUE_SET);
    EXPECT_EQ(kindOf("VSUFF=x"), KIND_VALUE);
    EXPECT_EQ(kindOf("OSUFF=x"), KIND_OBJECT);
    EXPECT_EQ(kindOf("CLCONV=x"), KIND_CLASS);
    EXPECT_EQ(kindOf("CCONV=x"), KIND_COMPONENT);
}

TEST(NamingOptions, ConversionOfNames) {
    struct Row {
        const char *conv, *pref, *name, *suff, *result;
    };
    for (const Row &row : std::initializer_list<Row>{{"HU", "", "myTypeName", "", "MY_TYPE_NAME"},
                                                     {"hl", "", "myTypeName", "", "my_type_name"},
                                                     {"H", "", "myTypeName", "", "my_Type_Name"},
                                                     {"H", "", "ABCDef", "", "ABCDef"},
                                                     {"HL", "pre", "Name2B", "X", "pre_name2_bx"},
                                                     {"HU", "a_", "B", "c", "A_BC"},
                                                     {"U", "x-", "a1-b", "-c", "X_A1_B_C"},
                                                     {"L", "", "FooBar", "", "foobar"},
                                                     {"", "p-", "aB-c", "-s", "p_aB_c_s"},
                                                     {nullptr, nullptr, "aB", nullptr, "aB"}}) {
        FixRec fix;
        fix.conv = row.conv;
        fix.pref = row.pref;
        fix.name = row.name;
        fix.suff = row.suff;
        fix.idLen = 32;
        EXPECT_EQ(printFixRec(fix), row.result);
    }
}

/* A module "x" with some names. */
class Naming : public ::testing::Test {
protected:
    void settle(const std::vector<std::string> &options) { settleGeneralOptions(module_, options); }

    /* Name of a type (or component ...) that is called `name` and has these options of its own. */
    Text nameOf(int kind, const char *name, const std::vector<StoredOption> &own = {}) {
        return printFixRec(fixOf(kind, name, own));
    }

    FixRec fixOf(int kind, const char *name, const std::vector<StoredOption> &own = {}) {
        const RecNr nameIdx = name == nullptr ? 0 : putStri(module_, name);
        const auto first = static_cast<RecNr>(module_->tedRecs.size()) + 1;
        for (const StoredOption &option : own) {
            TedRec record;
            record.tedKind = static_cast<std::uint8_t>(option.kind);
            record.tedText = putStri(module_, option.text.c_str());
            module_->tedRecs.push_back(record);
        }
        TNode type;
        VNode value;
        type.nameIdx = value.nameIdx = nameIdx;
        if (!own.empty()) {
            type.tedFirst = value.tedFirst = first;
            type.tedLast = value.tedLast = static_cast<RecNr>(module_->tedRecs.size());
            type.optionBits = optionMask(OPT_NAMING);
            value.valueFlags = VALUE_NAMING;
        }
        module_->tNodes.push_back(type);
        module_->vNodes.push_back(value);
        readRec(module_, REC_TNODE, recCount(module_, REC_TNODE));
        readRec(module_, REC_VNODE, recCount(module_, REC_VNODE));
        FixRec fix;
        getFixRec(&fix, kind);
        return fix;
    }

    ModRec *module_ = makeOptionModule("x", "Mod_X", 5);
};

TEST_F(Naming, PlainNamesAndTheirLength) {
    settle({"NAMELEN=8", "CPREF=a_long_prefix_", "VNAME=x:a_replacement", "OCONV=L"});
    EXPECT_EQ(nameOf(KIND_TYPE, "My-Type"), "My-Type") << "it stays as it is";
    EXPECT_EQ(nameOf(KIND_TYPE, "Name-of-twenty-chars"), "Name-of-");
    EXPECT_EQ(nameOf(KIND_COMPONENT, "name_of_twenty_chars"), "a_long_prefix_name_of_");
    EXPECT_EQ(nameOf(KIND_VALUE, "x"), "a_replac");
    EXPECT_EQ(nameOf(KIND_OBJECT, "my-Obj"), "my_obj");
    const FixRec nameless = fixOf(KIND_COMPONENT, nullptr, {{TED_OPTION, "-CNAME=x"}});
    EXPECT_EQ(nameless.id, nullptr);
    EXPECT_EQ(nameless.name, nullptr);
}

TEST_F(Naming, OptionsForAllNamesAndForOne) {
    settle({"TPREF=t_", "TSUFF=:_s", "TNAME=Foo:Bar", "TPREF=Foo:", "CPREF=c_", "TNAME=Foo:Baz"});
    EXPECT_EQ(nameOf(KIND_TYPE, "My_Type"), "t_My_Type_s");
    EXPECT_EQ(nameOf(KIND_TYPE, "Foo"), "Baz_s") << "an empty prefix of its own, the last name";
    EXPECT_EQ(nameOf(KIND_TYPE, "Fo"), "t_Fo_s");
    EXPECT_EQ(nameOf(KIND_TYPE, "Foo1"), "t_Foo1_s");
    EXPECT_EQ(nameOf(KIND_COMPONENT, "Foo"), "c_Foo");
    EXPECT_EQ(nameOf(KIND_VALUE, "Foo"), "Foo");
}

TEST_F(Naming, HyphenAndUnderscoreAreOneCharacterAndTheFirstMentionWins) {
    settle({"TNAME=My-Type:A", "TNAME=My_Type:B", "TSUFF=My_Type:C", "VNAME=a-b:v"});
    EXPECT_EQ(nameOf(KIND_TYPE, "My_Type"), "A");
    EXPECT_EQ(nameOf(KIND_TYPE, "My-Type"), "A");
    EXPECT_EQ(nameOf(KIND_VALUE, "a_b"), "v");
}

TEST_F(Naming, WhatStandsOnTheDefinitionWins) {
    settle({"TPREF=t_", "TNAME=Foo:Bar"});
    EXPECT_EQ(nameOf(KIND_TYPE, "Foo",
                     {{TED_OPTION, "-TNAME=first"},
                      {TED_OPTION, "-TNAME=Own"},
                      {TED_BACKEND_OPTION, "-TNAME=no"},
                      {TED_OPTION, "-CNAME=no"},
                      {TED_OPTION, "-TCONV=U"},
                      {TED_OPTION, ""}}),
              "T_OWN");
}

TEST_F(Naming, NamedNumbersTakeTheDefaultsOfValues) {
    settle({"VPREF=v_", "VNAME=red:rot"});
    EXPECT_EQ(nameOf(KIND_NAMED_NUMBER, "blue"), "v_blue");
    EXPECT_EQ(nameOf(KIND_NAMED_NUMBER, "red", {{TED_OPTION, "-VSUFF=_s"}}), "v_rot_s");
    EXPECT_EQ(nameOf(KIND_OBJECT, "red"), "red");
}

TEST_F(Naming, EntrySymbolsAreFoundByName) {
    settle({"ENTRY=My-Pdu:PDU:sym", "ENTRY=Other:7", "ENTRY=Bad:8:no"});
    const FixChain &entries = module_->options->entries;
    ASSERT_NE(findGlbFixRecByName(entries, "My_Pdu"), nullptr);
    EXPECT_STREQ(findGlbFixRecByName(entries, "My_Pdu")->pref, "sym");
    EXPECT_EQ(findGlbFixRecByName(entries, "Other")->pref, nullptr);
    EXPECT_EQ(findGlbFixRecByName(entries, "Bad"), nullptr);
    EXPECT_EQ(findGlbFixRecByName(entries, "My"), nullptr);
}

class Prefixes : public Naming {
protected:
    /* "file gen" of the record that the option makes; what it writes goes to messages_. */
    std::string prefixes(const char *option) {
        module_->options->prefixLength = 5;
        ::testing::internal::CaptureStderr();
        const bool ok = prefixOptOK(module_, option);
        messages_ = ::testing::internal::GetCapturedStderr();
        if (!ok)
            return "refused";
        const ModRec *made = modRecList.records.back().get();
        return made->moduleName + " " + made->filePrefix + " " + made->genPrefix;
    }

    std::string messages_;
};

TEST_F(Prefixes, PartsAndWhatStandsForMissingOnes) {
    EXPECT_EQ(prefixes("My-Mod:ab-c:d_e"), "My_Mod ab-c d_e");
    EXPECT_EQ(prefixes("My-Mod:fg"), "My_Mod fg fg");
    EXPECT_EQ(prefixes("My-Mod::h"), "My_Mod My-Mo h");
    EXPECT_EQ(prefixes("Mod1:i:"), "Mod1 i i");
    EXPECT_EQ(prefixes("Mod2"), "Mod2 Mod2 Mod2");
    EXPECT_EQ(prefixes(std::string(200, 'A').append(":j").c_str()), std::string(128, 'A') + " j j");
    EXPECT_EQ(messages_, "");
    for (const char *option : {"my-mod:a", "", ":a", "My mod:a", "Mod:a:b:c", "Mod:a:b/c"})
        EXPECT_EQ(prefixes(option), "refused") << option;
}

TEST_F(Prefixes, LongPartsAreCutWithAWarning) {
    EXPECT_EQ(prefixes("Mod:filepref:genpref"), "Mod filep genpr");
    EXPECT_EQ(messages_,
              "\nWARNING : A file prefix 'filepref:genpref' is longer than 5 characters.\n"
              "          Truncating it to 5 characters.\n"
              "          Check value of the PREFIXLEN option.\n"
              "\nWARNING : A generation prefix 'genpref' is longer than 5 characters.\n"
              "          Truncating it to 5 characters.\n"
              "          Check value of the PREFIXLEN option.\n");
    EXPECT_EQ(prefixes("A-Module::"), "A_Module A-Mod A-Mod");
    EXPECT_EQ(messages_.rfind("WARNING : A file prefix 'A-Module::' is"), 1u) << "it warns once";
}

} // namespace
