#include <algorithm>

#include "asntree/octets.h"
#include "asntree/reading.h"

/* Values that are strings: of bits, octets and characters. */

namespace asntree {

std::string contentOf(Compilation &c, const Value &value) {
    const SourceFile &file = c.sources[value.place.file];
    return stringContent(file, file.tokens[value.token]);
}

namespace {

std::string_view keepText(Compilation &c, std::string text) {
    return memosOf(c).texts.emplace_back(std::move(text));
}

void reportNoBit(Reading &r, const Name &name) {
    std::vector<std::string_view> candidates;
    for (const SettledItem &item : itemsOf(r.c, r.base))
        candidates.push_back(item.item->name.text);
    const std::string_view near = nearestName(name.text, candidates);
    std::vector<Remark> remarks;
    if (!near.empty())
        remarks.push_back({{}, "did you mean " + quote(near) + "?"});
    error(r.c.diagnostics, name.place,
          quote(name.text) + " is no named bit of " + describeType(r.governor), remarks);
}

void readNamedBits(Reading &r) {
    ParseContext parsing = r.c.parsing();
    const TokenRange range = r.value().tokens;
    const std::vector<Name> written = readIdentifiers(parsing, range);
    if (written.empty() && !range.empty())
        return;
    std::vector<std::string_view> names;
    std::vector<Number> numbers;
    for (const Name &name : written) {
        const SettledItem *item = findItem(r.c, r.base, name.text);
        if (item == nullptr) {
            reportNoBit(r, name);
            return;
        }
        names.push_back(item->item->name.text);
        numbers.push_back(item->number);
    }
    ValueMemos &memos = memosOf(r.c);
    memos.names.push_back(std::move(names));
    memos.numbers.push_back(std::move(numbers));
    r.datum.kind = DatumKind::NamedBits;
    r.datum.bits = memos.names.back();
    r.datum.bitNumbers = memos.numbers.back();
}

} // namespace

void readBits(Reading &r) {
    const Value &value = r.value();
    if (value.kind == ValueKind::Braced) {
        readNamedBits(r);
        return;
    }
    if (value.kind != ValueKind::BString && value.kind != ValueKind::HString) {
        reportMismatch(r, "'0101'B, '0F'H or named bits in braces");
        return;
    }
    std::string digits = contentOf(r.c, value);
    if (value.kind == ValueKind::HString)
        digits = binaryDigits(digits);
    r.datum.kind = DatumKind::Bits;
    r.datum.fromBits = true;
    r.datum.text = keepText(r.c, std::move(digits));
}

void readOctets(Reading &r) {
    const Value &value = r.value();
    if (value.kind != ValueKind::BString && value.kind != ValueKind::HString) {
        reportMismatch(r, "'0F'H or '00001111'B");
        return;
    }
    r.datum.kind = DatumKind::Octets;
    r.datum.fromBits = value.kind == ValueKind::BString;
    r.datum.text = keepText(r.c, contentOf(r.c, value));
}

NumberSet alphabetOf(TypeKind kind) {
    const auto range = [](std::int64_t lower, std::int64_t upper) {
        return NumberRange{Number::of(lower), Number::of(upper)};
    };
    switch (kind) {
    case TypeKind::NumericString:
        return {{range(' ', ' '), range('0', '9')}};
    case TypeKind::PrintableString:
        return {{range(' ', ' '), range('\'', ')'), range('+', ':'), range('=', '='),
                 range('?', '?'), range('A', 'Z'), range('a', 'z')}};
    case TypeKind::VisibleString:
        return {{range(0x20, 0x7E)}};
    case TypeKind::Ia5String:
        return {{range(0, 0x7F)}};
    case TypeKind::BmpString:
        return {{range(0, 0xFFFF)}};
    default:
        return {{range(0, 0x7FFFFFFF)}};
    }
}

std::string textOfCharacter(char32_t character) {
    if (character > 0x20 && character < 0x7F)
        return std::string("`") + static_cast<char>(character) + "`";
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    for (int shift = 28; shift >= 0; shift -= 4)
        if (const char32_t digit = character >> shift; digit != 0 || shift < 16)
            text += digits[digit & 15];
    return "U+" + text;
}

namespace {

/* As alphabetOf, quickly. */
bool belongs(TypeKind kind, char32_t character) {
    switch (kind) {
    case TypeKind::NumericString:
        return character == ' ' || (character >= '0' && character <= '9');
    case TypeKind::PrintableString:
        return character < 0x80 &&
               std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
                                "0123456789 '()+,-./:=?")
                       .find(static_cast<char>(character)) != std::string_view::npos;
    case TypeKind::VisibleString:
        return character >= 0x20 && character <= 0x7E;
    case TypeKind::Ia5String:
        return character <= 0x7F;
    case TypeKind::BmpString:
        return character <= 0xFFFF;
    default:
        return true;
    }
}

/* The characters of a text in UTF-8; octets that aren't stand for themselves, as in Latin-1. */
std::u32string decode(std::string_view text) {
    std::u32string result;
    while (!text.empty()) {
        const Decoded decoded = decodeUtf8(text);
        result += decoded.length == 0 ? static_cast<unsigned char>(text[0]) : decoded.character;
        text.remove_prefix(std::max<std::size_t>(decoded.length, 1));
    }
    return result;
}

/* A number of a tuple or quadruple; nothing if the value isn't one, or too large. */
std::optional<char32_t> cellOf(const Value &value, std::uint64_t limit) {
    if (value.kind != ValueKind::Number || value.negative)
        return std::nullopt;
    const auto number = asUint64(Number::ofDigits(value.text));
    if (!number || *number > limit)
        return std::nullopt;
    return static_cast<char32_t>(*number);
}

/* {column, row} of a table of 7 or 8 bits, or {group, plane, row, cell}. */
bool readCell(Reading &r, const std::vector<Value *> &values, std::u32string &out) {
    constexpr std::uint64_t tuple[] = {15, 15};
    constexpr std::uint64_t quadruple[] = {127, 255, 255, 255};
    const TypeKind kind = r.base.type->kind;
    const bool isWide = kind == TypeKind::Utf8String || kind == TypeKind::BmpString ||
                        kind == TypeKind::UniversalString;
    const bool four = values.size() == 4;
    const bool fits = (values.size() == 2 && kind != TypeKind::NumericString) || (four && isWide);
    char32_t character = 0;
    for (std::size_t i = 0; fits && i < values.size(); ++i) {
        const auto number = cellOf(*values[i], four ? quadruple[i] : tuple[i]);
        if (!number) {
            error(r.c.diagnostics, values[i]->place,
                  four ? "a character is {group, plane, row, cell} with numbers up to 127 and 255"
                       : "a character is {column, row} with numbers up to 15");
            return false;
        }
        character = character << (four ? 8 : 4) | *number;
    }
    if (!fits) {
        error(r.c.diagnostics, r.value().place,
              "a character of " + describeType(r.governor) + " is written as " +
                  (isWide ? "{group, plane, row, cell}" : "{column, row}") +
                  ", or in quotation marks");
        return false;
    }
    out += character;
    return true;
}

bool readPieces(Reading &r, std::u32string &out) {
    ParseContext parsing = r.c.parsing();
    const TokenRange range = r.value().tokens;
    const std::vector<Value *> values = readValueList(parsing, range);
    if (values.empty()) {
        if (range.empty())
            reportMismatch(r, "a text in quotation marks");
        return false;
    }
    if (values[0]->kind == ValueKind::Number)
        return readCell(r, values, out);
    for (const Value *value : values) {
        const Datum *piece = readAnew(r.c, {value, r.use.scope}, r.governor);
        if (piece->kind != DatumKind::Text)
            return false;
        constexpr std::size_t MOST = 1'000'000; /* such values may double one another */
        if (out.size() + piece->characters.size() > MOST) {
            error(r.c.diagnostics, value->place, "the text has more than 1000000 characters");
            return false;
        }
        out += piece->characters;
    }
    return true;
}

/* The characters of the value; nothing after a message. */
std::optional<std::u32string> piecesOf(Reading &r) {
    std::u32string characters;
    if (r.value().kind == ValueKind::CString) {
        characters = decode(contentOf(r.c, r.value()));
    } else if (r.value().kind != ValueKind::Braced) {
        reportMismatch(r, "a text in quotation marks");
        return std::nullopt;
    } else if (!readPieces(r, characters)) {
        return std::nullopt;
    }
    return characters;
}

void keepCharacters(Reading &r, std::u32string characters) {
    r.datum.kind = DatumKind::Text;
    r.datum.characters = memosOf(r.c).characters.emplace_back(std::move(characters));
}

} // namespace

void readCharacters(Reading &r) {
    auto characters = piecesOf(r);
    if (!characters)
        return;
    const TypeKind kind = r.base.type->kind;
    const auto strange =
        std::find_if_not(characters->begin(), characters->end(),
                         [kind](char32_t character) { return belongs(kind, character); });
    if (strange != characters->end()) {
        error(r.c.diagnostics, r.value().place,
              "the character " + textOfCharacter(*strange) + " is none of " +
                  std::string(kindText(kind)));
        return;
    }
    keepCharacters(r, std::move(*characters));
}

void readIri(Reading &r) {
    if (r.value().kind != ValueKind::CString) {
        reportMismatch(r, "a text in quotation marks");
        return;
    }
    const std::u32string characters = decode(contentOf(r.c, r.value()));
    const bool absolute = r.base.type->kind == TypeKind::OidIri;
    const bool begins = !characters.empty() && characters.front() == U'/';
    const bool ends = characters.empty() || characters.back() == U'/';
    if (begins != absolute || ends || characters.find(U"//") != std::u32string::npos) {
        error(r.c.diagnostics, r.value().place,
              absolute ? "an OID-IRI is written as \"/arc/arc\""
                       : "a RELATIVE-OID-IRI is written as \"arc/arc\"");
        return;
    }
    keepCharacters(r, characters);
}

} // namespace asntree
