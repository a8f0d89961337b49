#include <algorithm>

#include "asntree/reading.h"

/* Values of the types of times. */

namespace asntree {

namespace {

/* Looks through a text from left to right. */
struct Scan {
    std::string_view text;
    std::size_t at = 0;

    bool done() const { return at == text.size(); }
    bool take(char c) {
        if (done() || text[at] != c)
            return false;
        ++at;
        return true;
    }
    /* `count` digits that give a number from `lower` to `upper`. */
    bool number(std::size_t count, int lower, int upper) {
        int result = 0;
        for (std::size_t i = 0; i < count; ++i, ++at) {
            if (done() || text[at] < '0' || text[at] > '9')
                return false;
            result = result * 10 + (text[at] - '0');
        }
        return result >= lower && result <= upper;
    }
    bool atDigit() const { return !done() && text[at] >= '0' && text[at] <= '9'; }
};

/* "Z", "+hhmm", "-hh"; `needed`: there has to be one. */
bool zone(Scan &scan, bool needed) {
    if (scan.done())
        return !needed;
    if (scan.take('Z'))
        return scan.done();
    if (!scan.take('+') && !scan.take('-'))
        return false;
    return scan.number(2, 0, 23) && (scan.done() || scan.number(2, 0, 59)) && scan.done();
}

bool isGeneralizedTime(std::string_view text) {
    Scan scan{text};
    if (!scan.number(4, 0, 9999) || !scan.number(2, 1, 12) || !scan.number(2, 1, 31) ||
        !scan.number(2, 0, 24))
        return false;
    if (scan.atDigit() && !scan.number(2, 0, 59))
        return false;
    if (scan.atDigit() && !scan.number(2, 0, 60))
        return false;
    if (scan.take('.') || scan.take(',')) {
        if (!scan.atDigit())
            return false;
        while (scan.atDigit())
            ++scan.at;
    }
    return zone(scan, false);
}

bool isUtcTime(std::string_view text) {
    Scan scan{text};
    if (!scan.number(2, 0, 99) || !scan.number(2, 1, 12) || !scan.number(2, 1, 31) ||
        !scan.number(2, 0, 24) || !scan.number(2, 0, 59))
        return false;
    if (scan.atDigit() && !scan.number(2, 0, 60))
        return false;
    return zone(scan, true);
}

bool takeDate(Scan &scan) {
    return scan.number(4, 0, 9999) && scan.take('-') && scan.number(2, 1, 12) && scan.take('-') &&
           scan.number(2, 1, 31);
}

bool takeTimeOfDay(Scan &scan) {
    return scan.number(2, 0, 24) && scan.take(':') && scan.number(2, 0, 59) && scan.take(':') &&
           scan.number(2, 0, 60);
}

/* Any form of a time is only looked at for characters that none has. */
bool isTimeText(std::string_view text) {
    return !text.empty() &&
           text.find_first_not_of("0123456789+-:,./TWZPYMDHSRC") == std::string_view::npos;
}

bool fits(TypeKind kind, std::string_view text) {
    Scan scan{text};
    switch (kind) {
    case TypeKind::GeneralizedTime:
        return isGeneralizedTime(text);
    case TypeKind::UtcTime:
        return isUtcTime(text);
    case TypeKind::Date:
        return takeDate(scan) && scan.done();
    case TypeKind::TimeOfDay:
        return takeTimeOfDay(scan) && scan.done();
    case TypeKind::DateTime:
        return takeDate(scan) && scan.take('T') && takeTimeOfDay(scan) && scan.done();
    case TypeKind::Duration:
        return text.size() > 2 && scan.take('P') && isTimeText(text);
    default:
        return isTimeText(text);
    }
}

std::string_view formOf(TypeKind kind) {
    switch (kind) {
    case TypeKind::GeneralizedTime:
        return "\"YYYYMMDDhhmmss.fZ\"";
    case TypeKind::UtcTime:
        return "\"YYMMDDhhmmssZ\"";
    case TypeKind::Date:
        return "\"YYYY-MM-DD\"";
    case TypeKind::TimeOfDay:
        return "\"hh:mm:ss\"";
    case TypeKind::DateTime:
        return "\"YYYY-MM-DDThh:mm:ss\"";
    case TypeKind::Duration:
        return "\"P1Y2M3DT4H5M6S\"";
    default:
        return "a time of ISO 8601 in quotation marks";
    }
}

} // namespace

void readTime(Reading &r) {
    const TypeKind kind = r.base.type->kind;
    if (r.value().kind != ValueKind::CString) {
        reportMismatch(r, formOf(kind));
        return;
    }
    std::string text = contentOf(r.c, r.value());
    if (!fits(kind, text)) {
        error(r.c.diagnostics, r.value().place,
              "a value of " + std::string(kindText(kind)) + " is written as " +
                  std::string(formOf(kind)) + ", with numbers that times have");
        return;
    }
    r.datum.kind = DatumKind::Time;
    r.datum.text = memosOf(r.c).texts.emplace_back(std::move(text));
}

namespace {

/* Properties of times with the settings that each may have; "#" stands for digits. */
struct TimeProperty {
    std::string_view name;
    std::string_view settings; /* each with a blank in front and behind */
};
constexpr TimeProperty timeProperties[] = {
    {"Basic", " Date Time Date-Time Interval Rec-Interval "},
    {"Date", " C Y YM YMD YD YW YWD "},
    {"Year", " Basic Proleptic Negative L# "},
    {"Time", " H HM HMS HF# HMF# HMSF# "},
    {"Local-or-UTC", " L Z LD "},
    {"Interval-type", " SE D SD DE "},
    {"SE-point", " Date Time Date-Time "},
    {"Recurrence", " Unlimited R# "},
    {"Midnight", " Start End "},
};

bool isTimeSetting(std::string_view name, std::string_view setting) {
    const std::size_t digits = setting.find_first_of("0123456789");
    std::string sought = " " + std::string(setting.substr(0, digits));
    if (digits != std::string_view::npos) {
        if (setting.find_first_not_of("0123456789", digits) != std::string_view::npos)
            return false;
        sought += '#';
    }
    sought += ' ';
    return std::any_of(std::begin(timeProperties), std::end(timeProperties),
                       [&](const TimeProperty &property) {
                           return property.name == name &&
                                  property.settings.find(sought) != std::string_view::npos;
                       });
}

} // namespace

bool isTimeSettings(std::string_view text) {
    while (!text.empty()) {
        const std::string_view pair = text.substr(0, text.find(' '));
        const std::size_t equals = pair.find('=');
        if (equals == std::string_view::npos ||
            !isTimeSetting(pair.substr(0, equals), pair.substr(equals + 1)))
            return false;
        text.remove_prefix(std::min(text.size(), pair.size() + 1));
    }
    return true;
}

} // namespace asntree
