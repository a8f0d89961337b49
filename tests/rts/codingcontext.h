#pragma once

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/* Tests write the calls of generated code with a context in scope, as reentrant code does. */
#define ASN_REENTRANT 1
#include "asnapi.h"
#include "asncodec.ext"

using Coding = std::function<void(ASNCODG *asncodg)>;

inline std::string hexOf(const BYTE_TYPE *p, size_t length) {
    std::string text;
    char octet[3];
    for (size_t i = 0; i < length; ++i) {
        std::snprintf(octet, sizeof octet, "%02x", p[i]);
        text += octet;
    }
    return text;
}

/* Digits of two make an octet; blanks between octets count for nothing. */
inline std::vector<BYTE_TYPE> octetsOf(const std::string &hex) {
    std::vector<BYTE_TYPE> octets;
    for (size_t i = 0; i + 1 < hex.size();) {
        if (hex[i] == ' ') {
            ++i;
            continue;
        }
        octets.push_back(static_cast<BYTE_TYPE>(std::stoi(hex.substr(i, 2), nullptr, 16)));
        i += 2;
    }
    return octets;
}

/* The encoding that the calls write, or the name of the error. */
inline std::string encoded(const Coding &calls, size_t room = 200000) {
    auto context = std::make_unique<ASNCODG>();
    std::vector<BYTE_TYPE> buffer(room);
    asnOpenEncoder(context.get(), buffer.data(), buffer.size());
    calls(context.get());
    size_t length;
    ASNERROR error;
    const BYTE_TYPE *p = asnEncoded(context.get(), &length, &error);
    return p ? hexOf(p, length) : asnErrorName(error.code);
}

/* What values own, as long as this lives. */
struct Kept {
    Kept() = default;
    Kept(const Kept &) = delete;
    Kept &operator=(const Kept &) = delete;
    ~Kept() { asnFreeMemory(&memory); }

    ASNMEM memory = {};
};

/* "ASN_OK", or the error's name and place as "TAG_FAIL 2". The octets lie alone in their memory, so
   that reading past them is noticed. */
inline std::string decoded(const std::vector<BYTE_TYPE> &octets, const Coding &calls, Kept &kept) {
    auto context = std::make_unique<ASNCODG>();
    std::unique_ptr<BYTE_TYPE[]> exact(new BYTE_TYPE[octets.size()]);
    std::copy(octets.begin(), octets.end(), exact.get());
    asnOpenDecoder(context.get(), exact.get(), octets.size(), &kept.memory);
    calls(context.get());
    ASNERROR error;
    BOOLE done = asnDecoded(context.get(), nullptr, &error);
    std::string result = asnErrorName(error.code);
    if (!done)
        result += " " + std::to_string(error.offset);
    return result;
}

inline std::string decoded(const std::string &hex, const Coding &calls, Kept &kept) {
    return decoded(octetsOf(hex), calls, kept);
}

/* The same for a value that is not needed any more. */
inline std::string decoded(const std::vector<BYTE_TYPE> &octets, const Coding &calls) {
    Kept kept;
    return decoded(octets, calls, kept);
}

inline std::string decoded(const std::string &hex, const Coding &calls) {
    return decoded(octetsOf(hex), calls);
}

inline std::string plain(const std::string &hex) {
    return hexOf(octetsOf(hex).data(), octetsOf(hex).size());
}
