#include "store/strings.h"

#include <string>
#include <unordered_set>

#include "base/fatal.h"

namespace {

/* The table of a module for texts of a width; C is the type of its characters. */
template <typename C> constexpr std::vector<const C *> ModRec::*TABLE = nullptr;
template <> constexpr auto TABLE<char> = &ModRec::stri8;
template <> constexpr auto TABLE<char16_t> = &ModRec::stri16;
template <> constexpr auto TABLE<char32_t> = &ModRec::stri32;

template <typename C> struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::basic_string_view<C> text) const {
        return std::hash<std::basic_string_view<C>>{}(text);
    }
};

/* The texts of all modules. The nodes of the set never move, and it lives to the end of the
 * process. */
template <typename C> const C *intern(std::basic_string_view<C> text) {
    using Pool = std::unordered_set<std::basic_string<C>, TextHash<C>, std::equal_to<>>;
    static Pool &pool = *new Pool;
    /* A text ends at its first zero, as its readers see it. */
    text = text.substr(0, text.find(C{}));
    auto place = pool.find(text);
    if (place == pool.end())
        place = pool.emplace(text).first;
    return place->c_str();
}

template <typename C> RecNr append(ModRec *module, const C *interned) {
    auto &table = module->*TABLE<C>;
    if (table.size() >= static_cast<std::size_t>(EMPTY_STRI) - 1)
        fatalError(FATAL_WRITE_RECORD, nullptr);
    table.push_back(interned);
    return static_cast<RecNr>(table.size());
}

template <typename C> const C *getStriInternal(ModRec *module, RecNr number) {
    static constexpr C empty[] = {C{}};
    if (number == EMPTY_STRI)
        return empty;
    if (module == nullptr)
        fatalError(FATAL_READ_RECORD, nullptr);
    const auto &table = module->*TABLE<C>;
    /* The amount is taken in 64 bits, since the least number has no positive counterpart. */
    const std::int64_t nr = number < 0 ? -std::int64_t{number} : number;
    if (nr < 1 || static_cast<std::size_t>(nr) > table.size())
        fatalError(FATAL_READ_RECORD, nullptr);
    return table[static_cast<std::size_t>(nr) - 1];
}

} // namespace

const char *getStri(ModRec *module, RecNr number) {
    return getStriInternal<char>(module, number);
}
const char *optionalStri(ModRec *module, RecNr number) {
    return number == 0 ? "" : getStri(module, number);
}
const char16_t *getStri16(ModRec *module, RecNr number) {
    return getStriInternal<char16_t>(module, number);
}
const char32_t *getStri32(ModRec *module, RecNr number) {
    return getStriInternal<char32_t>(module, number);
}

RecNr putStri(ModRec *module, const char *text) {
    if (module == nullptr || text == nullptr)
        fatalError(FATAL_WRITE_RECORD, nullptr);
    const char *interned = allocateUniqStri(text);
    RecNr &number = module->striNumbers[interned];
    if (number == 0)
        number = append(module, interned);
    return number;
}

const char *allocateUniqStri(std::string_view text) {
    return intern(text);
}

void appendStri(ModRec *module, std::string_view text) {
    const char *interned = intern(text);
    module->striNumbers[interned] = append(module, interned);
}
void appendStri16(ModRec *module, std::u16string_view text) {
    append(module, intern(text));
}
void appendStri32(ModRec *module, std::u32string_view text) {
    append(module, intern(text));
}
