#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <signal.h>
#include <unistd.h>

/* Runs a fuzz program without a fuzzer: each file as it is, its beginnings if asked for, and as
   many changed forms as asked for, always the same ones for the same seed.

   usage: PROGRAM [-n CHANGED-FORMS] [-c LARGEST-FILE-WITH-BEGINNINGS] [-s SEED] FILE-OR-DIRECTORY
   ...

   An input that ends the process stays in the file "crash-input"; one that takes over a minute
   counts as one. */

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace {

namespace fs = std::filesystem;

constexpr unsigned LONGEST_RUN = 60; /* seconds */
constexpr std::size_t LARGEST_INPUT = 200000;

std::string input;
unsigned long inputs;
std::uint32_t state = 20021231;

std::size_t chance(std::size_t below) {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return below == 0 ? 0 : state % below;
}

void keepInput() {
    if (std::FILE *file = std::fopen("crash-input", "wb")) {
        std::fwrite(input.data(), 1, input.size(), file);
        std::fclose(file);
    }
}

void die(int number) {
    keepInput();
    std::fprintf(stderr, "signal %d at input %lu; it is in crash-input\n", number, inputs);
    signal(number, SIG_DFL);
    raise(number);
}

void run(std::string text) {
    input = std::move(text);
    ++inputs;
    alarm(LONGEST_RUN);
    /* ends where its memory ends */
    std::vector<std::uint8_t> octets(input.begin(), input.end());
    octets.shrink_to_fit();
    LLVMFuzzerTestOneInput(octets.data(), octets.size());
}

/* --- changes --- */

/* A part of a text that is dropped, doubled, or put elsewhere as a whole. */
struct Piece {
    std::size_t begin;
    std::size_t end;
};

Piece lineAt(const std::string &text, std::size_t place) {
    std::size_t begin = place, end = text.find('\n', place);
    while (begin > 0 && text[begin - 1] != '\n')
        --begin;
    return {begin, end == std::string::npos ? text.size() : end + 1};
}

bool isWord(char letter) {
    return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '-' || letter == '_';
}

Piece tokenAt(const std::string &text, std::size_t place) {
    std::size_t begin = place, end = place + 1;
    if (isWord(text[place])) {
        while (begin > 0 && isWord(text[begin - 1]))
            --begin;
        while (end < text.size() && isWord(text[end]))
            ++end;
    }
    while (end < text.size() && text[end] == ' ')
        ++end;
    return {begin, end};
}

Piece octetsAt(const std::string &text, std::size_t place) {
    return {place, std::min(text.size(), place + 1 + chance(16))};
}

Piece anyPiece(const std::string &text) {
    const std::size_t place = chance(text.size());
    switch (chance(4)) {
    case 0:
        return lineAt(text, place);
    case 1:
        return octetsAt(text, place);
    default:
        return tokenAt(text, place);
    }
}

/* Octets that mean something to one reader or another. */
constexpr unsigned char telling[] = {0x00, 0x01, 0x7F, 0x80, 0x81, 0x84, 0xFF, 0x30, 0xA0, 0xBF,
                                     '{',  '}',  '(',  ')',  '[',  ']',  '"',  '\'', '-',  '.',
                                     ':',  ',',  '|',  '&',  '@',  '\n', '\\', '%',  '=',  '+'};

/* `other` is a text to take pieces from. */
void change(std::string &text, const std::string &other) {
    if (text.empty())
        return;
    const std::size_t place = chance(text.size());
    const Piece a = anyPiece(text);
    const std::string whole = text.substr(a.begin, a.end - a.begin);
    const char octet = static_cast<char>(telling[chance(sizeof telling)]);
    switch (chance(8)) {
    case 0:
        text[place] = static_cast<char>(text[place] ^ (1 << chance(8)));
        break;
    case 1:
        text[place] = octet;
        break;
    case 2:
        text.insert(place, 1, octet);
        break;
    case 3:
        text.erase(a.begin, a.end - a.begin);
        break;
    case 4:
        text.insert(a.end, whole);
        break;
    case 5: {
        const Piece b = anyPiece(text); /* swapped with `a` if they stand apart */
        if (b.begin >= a.end) {
            const std::string second = text.substr(b.begin, b.end - b.begin);
            text.replace(b.begin, second.size(), whole);
            text.replace(a.begin, whole.size(), second);
        }
        break;
    }
    case 6:
        text.insert(tokenAt(text, place).begin, whole);
        break;
    default:
        if (!other.empty()) {
            const Piece b = anyPiece(other);
            text.replace(a.begin, chance(2) * (a.end - a.begin), other, b.begin, b.end - b.begin);
        }
    }
}

/* --- the command line --- */

std::string readFile(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> readSeeds(const std::vector<fs::path> &paths) {
    std::vector<fs::path> files;
    for (const fs::path &path : paths) {
        if (!fs::is_directory(path))
            files.push_back(path);
        else
            for (const auto &entry : fs::directory_iterator(path))
                files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    std::vector<std::string> seeds;
    for (const fs::path &file : files)
        seeds.push_back(readFile(file));
    return seeds;
}

} // namespace

int main(int argc, char **argv) {
    unsigned long changed = 0, largest = 0;
    for (int option; (option = getopt(argc, argv, "n:c:s:")) != -1;) {
        const unsigned long number = optarg == nullptr ? 0 : std::strtoul(optarg, nullptr, 10);
        switch (option) {
        case 'n':
            changed = number;
            break;
        case 'c':
            largest = number;
            break;
        case 's':
            state = static_cast<std::uint32_t>(number * 2654435761u) | 1;
            break;
        default:
            return 2;
        }
    }
    for (int number : {SIGABRT, SIGALRM, SIGSEGV})
        signal(number, die);
    if (__sanitizer_set_death_callback != nullptr)
        __sanitizer_set_death_callback(keepInput);
    const std::vector<std::string> seeds = readSeeds({argv + optind, argv + argc});
    for (const std::string &seed : seeds) {
        run(seed);
        for (std::size_t length = 0; length < seed.size() && seed.size() <= largest; ++length)
            run(seed.substr(0, length));
        for (unsigned long i = 0; i < changed; ++i) {
            std::string text = seed;
            for (std::size_t changes = 1 + chance(4); changes > 0 && text.size() < LARGEST_INPUT;
                 --changes)
                change(text, seeds[chance(seeds.size())]);
            run(std::move(text));
        }
    }
    if (__sanitizer_set_death_callback != nullptr)
        __sanitizer_set_death_callback([] {}); /* leaks are told at the end, of no input alone */
    std::printf("%lu inputs\n", inputs);
    return inputs == 0 ? 1 : 0;
}
