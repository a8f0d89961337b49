#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "asntree/compile.h"
#include "tests/support/paths.h"

/* Modules with the messages that they must give: tests/asntree/NAME.txt holds sections of a title
   ("== title"), ASN.1 text and a line "-- expect: line:column: error: text" for each message; without
   one the text is accepted in silence. With VELMO_UPDATE=1 in the environment the expected messages
   are written anew, for review as a difference. */

namespace {

namespace fs = std::filesystem;

struct Section {
    std::string title;
    std::string text;
    std::string expected;
};

std::vector<Section> readSections(const fs::path &path) {
    std::vector<Section> sections;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("== ", 0) == 0)
            sections.push_back({line.substr(3), {}, {}});
        else if (sections.empty())
            continue;
        else if (line.rfind("-- expect: ", 0) == 0)
            sections.back().expected += line + "\n";
        else
            sections.back().text += line + "\n";
    }
    return sections;
}

void writeSections(const fs::path &path, const std::vector<Section> &sections) {
    std::ofstream file(path);
    for (const Section &section : sections)
        file << "== " << section.title << "\n" << section.text << section.expected;
}

std::string messagesOf(const std::string &text) {
    asntree::Compilation c;
    asntree::addFile(c, *asntree::addSource(c.sources, "text", text));
    asntree::checkAll(c);
    std::ostringstream all;
    std::istringstream lines(asntree::printed(c.diagnostics, false));
    for (std::string line; std::getline(lines, line);)
        if (line.rfind("text:", 0) == 0 && line.find(": note: ") == std::string::npos)
            all << "-- expect: " << line.substr(5) << "\n";
    return all.str();
}

std::vector<fs::path> textFiles() {
    std::vector<fs::path> files;
    for (const auto &entry : fs::recursive_directory_iterator(sourceDir + "/tests/asntree"))
        if (entry.path().extension() == ".txt" && entry.path().filename() != "CMakeLists.txt")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

class Texts : public testing::TestWithParam<fs::path> {};

TEST_P(Texts, GiveTheirMessages) {
    std::vector<Section> sections = readSections(GetParam());
    ASSERT_FALSE(sections.empty()) << GetParam();
    for (Section &section : sections) {
        const std::string messages = messagesOf(section.text);
        if (std::getenv("VELMO_UPDATE") != nullptr)
            section.expected = messages;
        EXPECT_EQ(messages, section.expected) << "== " << section.title;
    }
    if (std::getenv("VELMO_UPDATE") != nullptr)
        writeSections(GetParam(), sections);
}

INSTANTIATE_TEST_SUITE_P(Asntree, Texts, testing::ValuesIn(textFiles()),
                         [](const auto &file) { return file.param.stem().string(); });

} // namespace
