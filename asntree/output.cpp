#include "asntree/output.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <unistd.h>

namespace asntree {

namespace fs = std::filesystem;

namespace {

/* Where a file is really to be: behind symbolic links, which stay. */
std::string realPath(fs::path path) {
    constexpr int MOST = 40; /* more go in a circle */
    std::error_code failure;
    for (int links = 0; links < MOST && fs::is_symlink(path, failure); ++links)
        path = path.parent_path() / fs::read_symlink(path, failure);
    return path.string();
}

bool writeFile(const std::string &path, std::string_view text, std::string &why) {
    if (path == "/dev/stdout") { /* where the summary goes as well */
        std::fwrite(text.data(), 1, text.size(), stdout);
        return true; /* what fails there is told at the end */
    }
    /* A device is written on, a file anew. */
    std::FILE *file = std::fopen(path.c_str(), path.starts_with("/dev/") ? "ab" : "wb");
    if (file == nullptr) {
        why = path + ": " + std::strerror(errno);
        return false;
    }
    bool good = std::fwrite(text.data(), 1, text.size(), file) == text.size();
    if (!good)
        why = path + ": " + std::strerror(errno);
    if (std::fclose(file) != 0 && good) {
        why = path + ": " + std::strerror(errno);
        good = false;
    }
    return good;
}

bool makeDirectory(const std::string &path, std::string &why) {
    const fs::path directory = fs::path(path).parent_path();
    std::error_code failure;
    if (directory.empty() || fs::is_directory(directory, failure))
        return true;
    fs::create_directories(directory, failure);
    if (!failure)
        return true;
    why = directory.string() + ": " + failure.message();
    return false;
}

} // namespace

bool writeBeside(Outputs &outputs, const std::string &path, std::string_view text,
                 std::string &why) {
    if (!makeDirectory(path, why))
        return false;
    const std::string place = realPath(path);
    std::error_code failure;
    if (fs::is_directory(place, failure)) {
        why = path + ": it is a directory";
        return false;
    }
    /* /dev/stdout leads to a file that others write to as well. */
    const bool isDevice = path.starts_with("/dev/") || path.starts_with("/proc/") ||
                          (fs::exists(place, failure) && !fs::is_regular_file(place, failure));
    if (isDevice) {
        outputs.files.push_back({path, {}, std::string(text)});
        return true;
    }
    const std::string beside = place + "." + std::to_string(getpid()) + ".new";
    outputs.files.push_back({place, beside, {}});
    return writeFile(beside, text, why);
}

bool putInPlace(Outputs &outputs, std::string &why) {
    bool good = true;
    for (OutputFile &file : outputs.files) {
        if (file.beside.empty()) {
            good = writeFile(file.path, file.text, why) && good;
            continue;
        }
        if (std::rename(file.beside.c_str(), file.path.c_str()) == 0)
            continue;
        why = file.path + ": " + std::strerror(errno);
        std::remove(file.beside.c_str());
        good = false;
    }
    outputs.files.clear();
    return good;
}

void dropOutputs(Outputs &outputs) {
    for (const OutputFile &file : outputs.files)
        if (!file.beside.empty())
            std::remove(file.beside.c_str());
    outputs.files.clear();
}

std::string treePath(const Settings &settings, const TreePlan &tree) {
    return settings.treeDirectory + tree.genPrefix + ".stx";
}

std::string listingPath(const Settings &settings, const TreePlan &tree) {
    return settings.listingDirectory + tree.genPrefix + ".lst";
}

namespace {

/* White space, "#" and ":" need a backslash, backslashes in front of them one more each, and "$" a
   second "$". */
std::string escaped(const std::string &path) {
    std::string text;
    std::size_t slashes = 0;
    for (char ch : path) {
        if (ch == ' ' || ch == '\t')
            text.append(slashes + 1, '\\');
        else if (ch == '#' || ch == ':')
            text += '\\';
        else if (ch == '$')
            text += '$';
        slashes = ch == '\\' ? slashes + 1 : 0;
        text += ch;
    }
    return text;
}

/* Words behind one another, in lines that end in a backslash where more follow. */
std::string folded(std::string line, const std::vector<std::string> &words) {
    constexpr std::size_t WIDTH = 98;
    std::string text;
    for (const std::string &word : words) {
        if (!line.empty() && line.size() + 1 + word.size() > WIDTH) {
            text += line + " \\\n";
            line = "   ";
        }
        line += " " + word;
    }
    return text + line;
}

std::string shellWord(const std::string &text) {
    const auto isPlain = [](unsigned char ch) {
        return std::isalnum(ch) != 0 || std::strchr("_-./=+:,@%", ch) != nullptr;
    };
    if (!text.empty() && std::all_of(text.begin(), text.end(), isPlain))
        return text;
    std::string quoted = "'";
    for (char ch : text)
        quoted += ch == '\'' ? std::string("'\\''") : std::string(1, ch);
    return quoted + "'";
}

} // namespace

std::string dependencyText(const std::vector<std::string> &targets,
                           const std::vector<std::string> &sources) {
    std::vector<std::string> words;
    for (const std::string &target : targets)
        words.push_back(escaped(target));
    if (words.empty())
        return {};
    words.back() += ":";
    std::string alone;
    for (const std::string &source : sources) {
        words.push_back(escaped(source));
        alone += "\n" + words.back() + ":\n";
    }
    const std::string first = words.front();
    words.erase(words.begin());
    return folded(first, words) + "\n" + alone;
}

std::string velmoCommand(const Settings &settings, const Plan &plan) {
    constexpr std::size_t VELMO_PREFIX_LENGTH = 5; /* what the generator takes without an option */
    std::vector<std::string> words;
    std::size_t longest = 0;
    for (const TreePlan &tree : plan.trees)
        longest = std::max(longest, tree.genPrefix.size());
    if (longest > VELMO_PREFIX_LENGTH || settings.prefixLengthGiven)
        words.push_back("-PREFIXLEN=" +
                        std::to_string(std::max<std::size_t>(longest, settings.prefixLength)));
    if (!settings.treeDirectory.empty())
        words.push_back(shellWord("-S=" + settings.treeDirectory));
    for (const TreePlan &tree : plan.trees)
        words.push_back(tree.genPrefix);
    return folded("velmo", words);
}

std::string summaryText(const Settings &settings, const Plan &plan) {
    const std::size_t count = plan.trees.size();
    std::string text = std::to_string(count) + (count == 1 ? " tree" : " trees") + " written";
    if (!settings.treeDirectory.empty())
        text += " to " + settings.treeDirectory;
    return text + ". To generate C from " + (count == 1 ? "it" : "them") + ":\n" +
           velmoCommand(settings, plan) + "\n";
}

} // namespace asntree
