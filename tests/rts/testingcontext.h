#pragma once

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

/* Tests write the calls of generated code with a context in scope, as reentrant code does. */
#define ASN_REENTRANT 1
#include "rts/asnapi.h"
#include "rts/asntst.ext"

using Testing = std::function<void(ASNTSTG *asntstg)>;

/* What asked values own, as long as this lives. */
struct Owned {
    Owned() = default;
    Owned(const Owned &) = delete;
    Owned &operator=(const Owned &) = delete;
    ~Owned() { asnFreeMemory(&memory); }

    ASNMEM memory = {};
};

/* The text that the calls print, with the error behind it if there is one. */
inline std::string printed(const Testing &calls) {
    auto context = std::make_unique<ASNTSTG>();
    char *text = nullptr;
    std::size_t length = 0;
    std::FILE *out = open_memstream(&text, &length);
    asnOpenTester(context.get(), nullptr, out, nullptr);
    calls(context.get());
    ASNERROR error;
    const BOOLE done = asnCloseTester(context.get(), &error);
    std::fclose(out);
    std::string result(text, length);
    std::free(text);
    return done ? result : result + asnErrorName(error.code);
}

/* "ASN_OK", or the error's name with its line and path as "MM_FAIL 2 Msg.id". Questions go to
   `questions` if that is given, and then a wrong answer may be corrected. */
inline std::string asked(const std::string &script, const Testing &calls, Owned &owned,
                         std::string *questions = nullptr) {
    auto context = std::make_unique<ASNTSTG>();
    char *text = nullptr;
    std::size_t length = 0;
    std::FILE *in = std::tmpfile();
    std::fwrite(script.data(), 1, script.size(), in);
    std::rewind(in);
    std::FILE *out = questions ? open_memstream(&text, &length) : nullptr;
    asnOpenTester(context.get(), in, out, &owned.memory);
    calls(context.get());
    ASNERROR error;
    std::string result;
    if (!asnCloseTester(context.get(), &error))
        result = " " + std::to_string(error.offset) + " " + error.path;
    result = asnErrorName(error.code) + result;
    std::fclose(in);
    if (out) {
        std::fclose(out);
        questions->assign(text, length);
        std::free(text);
    }
    return result;
}

inline std::string asked(const std::string &script, const Testing &calls) {
    Owned owned;
    return asked(script, calls, owned);
}
