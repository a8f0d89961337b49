#include "gen/fileset.h"

#include <gtest/gtest.h>

#include "base/files.h"
#include "base/toolinfo.h"
#include "model/backend.h"
#include "options/ketracnf.h"
#include "tests/support/runtool.h"

namespace {

class FileHeader : public ::testing::Test {
protected:
    static constexpr int SLOT = 1;

    void SetUp() override {
        initFiles();
        backendName = "TOOL";
        backendVersion = 305;
        backendPatchLevel = 2;
        timeStamp = {.version = 213, .treeVersion = 213, .date = 20270105, .time = 90807};
        modRec_.moduleName = "My_Module";
        modRec_.filePrefix = "my";
        modRec_.genPrefix = "gen";
        modRec_.stamp = {.version = 1, .treeVersion = 209, .date = 19991231, .time = 235959};
        modRec_.options = std::make_shared<GlobalOptions>();
        module_.modRec = &modRec_;
        initF(SLOT, dir_.path("").c_str(), ".typ");
        openF(SLOT, &module_);
    }

    WorkDir dir_;
    ModRec modRec_;
    AsnModule module_;
};

TEST_F(FileHeader, LinesBetweenTheirTexts) {
    modRec_.moduleName = "My_Module_" + std::string(70, 'm'); /* beyond column 78 */
    modRec_.options->info = std::string(60, 'a') + std::string(60, 'b') + std::string(10, 'c');
    printFileHeader(SLOT, "/*", " */", " * ", ".", &module_);
    closeF(SLOT);
    EXPECT_EQ(dir_.read("my.typ"),
              "/*\n"
              " * Processed by TOOL 3.05.2 on 05.01.2027 at 9:08.07.\n"
              " * Syntax file processed by KETRA 2.09 on 31.12.1999 at 23:59.59.\n"
              " * ASN.1 module = My_Module_" +
                  std::string(70, 'm') + ".\n * FILE = my.typ.\n * INFO = " + std::string(60, 'a') +
                  ".\n *        " + std::string(60, 'b') + ".\n *        cccccccccc.\n */\n");
}

TEST_F(FileHeader, EmptyTextsAndANamelessTool) {
    backendName = "";
    printFileHeader(0, "lost", "", "", "", &module_);
    printFileHeader(SLOT, "", nullptr, nullptr, "", &module_);
    closeF(SLOT);
    EXPECT_EQ(dir_.read("my.typ"),
              "\nSyntax file processed by KETRA 2.09 on 31.12.1999 at 23:59.59\n"
              "ASN.1 module = My_Module\nFILE = my.typ\n\n");
    EXPECT_EQ(
        printTimeStamp({.version = 0, .treeVersion = 0, .date = INT32_MIN, .time = INT32_MAX}),
        "on -48.-36.-214748 at 214748:36.47")
        << "a tree may hold any number";
}

} // namespace
