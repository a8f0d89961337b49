#include "store/strings.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <vector>

#include "base/fatal.h"

namespace {

/* The table of a module for texts of a width; C is the type of its characters. */
template <typename C> constexpr std::vector<const C *> ModRec::*TABLE = nullptr;
template <> constexpr auto TABLE<char> = &ModRec::stri8;
template <> constexpr auto TABLE<char16_t> = &ModRec::stri16;
template <> constexpr auto TABLE<char32_t> = &ModRec::stri32;

/* Texts of one width, each once. Most of the time that it takes to load a tree is spent here, so
   they stand one behind the other in blocks that never move, and are found by one look into one
   array, at most half of which is in use. */
template <typename C> class TextPool {
public:
    const C *intern(std::basic_string_view<C> text) {
        if (2 * used_ >= slots_.size())
            grow();
        const auto hash =
            static_cast<std::uint32_t>(std::hash<std::basic_string_view<C>>{}(text));
        Slot &slot = find(hash, text);
        if (slot.text == nullptr) {
            slot = {keep(text), hash, static_cast<std::uint32_t>(text.size())};
            ++used_;
        }
        return slot.text;
    }

private:
    struct Slot {
        const C *text = nullptr; /* null: free */
        std::uint32_t hash = 0;
        std::uint32_t length = 0;
    };
    static constexpr std::size_t BLOCK_SIZE = 16384; /* characters */

    /* The place of a text, or the free one where it belongs. */
    Slot &find(std::uint32_t hash, std::basic_string_view<C> text) {
        const std::size_t mask = slots_.size() - 1;
        std::size_t place = hash & mask;
        for (; slots_[place].text != nullptr; place = (place + 1) & mask) {
            const Slot &slot = slots_[place];
            if (slot.hash == hash && std::basic_string_view<C>(slot.text, slot.length) == text)
                break;
        }
        return slots_[place];
    }

    void grow() {
        std::vector<Slot> before(slots_.empty() ? 1024 : 2 * slots_.size());
        before.swap(slots_);
        for (const Slot &slot : before)
            if (slot.text != nullptr)
                find(slot.hash, {slot.text, slot.length}) = slot;
    }

    const C *keep(std::basic_string_view<C> text) {
        if (left_ <= text.size()) {
            left_ = std::max(BLOCK_SIZE, text.size() + 1);
            blocks_.push_back(std::make_unique<C[]>(left_));
            next_ = blocks_.back().get();
        }
        C *kept = next_;
        *std::copy(text.begin(), text.end(), kept) = C{};
        next_ += text.size() + 1;
        left_ -= text.size() + 1;
        return kept;
    }

    std::vector<Slot> slots_; /* a power of two of them */
    std::size_t used_ = 0;
    std::vector<std::unique_ptr<C[]>> blocks_;
    C *next_ = nullptr; /* in the last block */
    std::size_t left_ = 0;
};

/* The texts of all modules; they live to the end of the process. */
template <typename C> const C *intern(std::basic_string_view<C> text) {
    static TextPool<C> &pool = *new TextPool<C>;
    /* A text ends at its first zero, as its readers see it. */
    return pool.intern(text.substr(0, text.find(C{})));
}

template <typename C> RecNr append(ModRec *module, std::basic_string_view<C> text) {
    auto &table = module->*TABLE<C>;
    if (table.size() >= static_cast<std::size_t>(EMPTY_STRI) - 1)
        fatalError(FATAL_WRITE_RECORD, nullptr);
    table.push_back(intern(text));
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
    StriIndex &index = module->striIndex;
    for (; index.filled < module->stri8.size(); ++index.filled)
        index.numbers[module->stri8[index.filled]] = static_cast<RecNr>(index.filled + 1);
    const auto known = index.numbers.find(intern(std::string_view(text)));
    return known != index.numbers.end() ? known->second : append(module, std::string_view(text));
}

const char *allocateUniqStri(std::string_view text) {
    return intern(text);
}

void appendStri(ModRec *module, std::string_view text) {
    append(module, text);
}
void appendStri16(ModRec *module, std::u16string_view text) {
    append(module, text);
}
void appendStri32(ModRec *module, std::u32string_view text) {
    append(module, text);
}
