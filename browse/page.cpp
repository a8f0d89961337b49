#include "browse/page.h"

#include <functional>
#include <string_view>

#include "browse/embedded.h"

namespace browse {

namespace {

/* --- texts in any encoding --- */

/* Length of the UTF-8 character at `at`; 0 if there is none. */
std::size_t characterLength(std::string_view text, std::size_t at) {
    const auto octet = [&](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
    };
    const unsigned first = octet(at);
    const std::size_t length = first < 0x80   ? 1
                               : first < 0xC2 ? 0
                               : first < 0xE0 ? 2
                               : first < 0xF0 ? 3
                               : first < 0xF5 ? 4
                                              : 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((octet(at + i) & 0xC0) != 0x80)
            return 0;
    /* Longer than need be, half a surrogate, beyond the last character. */
    const unsigned second = octet(at + 1);
    if ((first == 0xE0 && second < 0xA0) || (first == 0xED && second > 0x9F) ||
        (first == 0xF0 && second < 0x90) || (first == 0xF4 && second > 0x8F))
        return 0;
    return length;
}

bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = characterLength(text, at);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

/* Appends the text as it stands inside a JSON string in a script element: "<" would begin markup
   there. What isn't UTF-8 is taken for Latin-1. */
void appendEscaped(std::string &out, std::string_view text) {
    const bool isLatin1 = !isUtf8(text);
    for (const char c : text) {
        const auto octet = static_cast<unsigned char>(c);
        if (c == '\n') {
            out += "\\n";
        } else if (octet < 0x20 || octet == 0x7F || c == '<' || c == '>' || c == '&') {
            char code[8];
            std::snprintf(code, sizeof code, "\\u%04x", octet);
            out += code;
        } else if (octet >= 0x80 && isLatin1) {
            out += static_cast<char>(0xC0 | (octet >> 6));
            out += static_cast<char>(0x80 | (octet & 0x3F));
        } else {
            if (c == '"' || c == '\\')
                out += '\\';
            out += c;
        }
    }
}

std::string quoted(std::string_view text) {
    std::string out = "\"";
    appendEscaped(out, text);
    return out + "\"";
}

/* For the markup itself. */
std::string markupText(std::string_view text) {
    std::string out;
    for (const char c : text)
        out += c == '<'   ? "&lt;"
               : c == '&' ? "&amp;"
                          : std::string(1, static_cast<unsigned char>(c) < 0x80 ? c : '?');
    return out;
}

/* With one kind of line end, and without a mark in front. */
std::string plainLines(std::string_view text) {
    std::string out;
    if (text.starts_with("\xEF\xBB\xBF"))
        text.remove_prefix(3);
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r')
            out += text[i];
        else if (i + 1 == text.size() || text[i + 1] != '\n')
            out += '\n';
    return out;
}

/* --- what the script of the page gets: data.js says what it does with it --- */

std::string strings(const std::vector<std::string> &texts) {
    std::string out = "[";
    for (const std::string &text : texts)
        out += (out.size() > 1 ? "," : "") + quoted(text);
    return out + "]";
}

std::string column(const std::vector<Node> &nodes,
                   const std::function<long(const Node &)> &number) {
    std::string out = "[";
    for (const Node &node : nodes)
        out += (out.size() > 1 ? "," : "") + std::to_string(number(node));
    return out + "]";
}

std::string nodeData(const Project &project) {
    std::string names;
    for (const Node &node : project.nodes)
        names += (&node == &project.nodes.front() ? "" : "\n") + node.name;
    std::string out = "{\"project\":" + quoted(project.name);
    out += ",\"files\":" + strings(project.files) + ",\"kinds\":" + strings(project.kinds);
    out += ",\"names\":" + quoted(names);
    out += ",\"levels\":" +
           column(project.nodes, [](const Node &node) { return static_cast<long>(node.level); });
    out += ",\"nodeFiles\":" + column(project.nodes, [](const Node &node) { return node.file; });
    out += ",\"nodeLines\":" + column(project.nodes, [](const Node &node) { return node.line; });
    out += ",\"nodeKinds\":" + column(project.nodes, [](const Node &node) { return node.kind; });
    out += ",\"messages\":[";
    for (const Message &message : project.messages)
        out += (&message == &project.messages.front() ? "[" : ",[") + std::to_string(message.file) +
               "," + std::to_string(message.line) + "," + quoted(message.text) + "," +
               std::to_string(message.count) + "]";
    return out + "]}";
}

void put(std::string_view text, std::FILE *out) {
    std::fwrite(text.data(), 1, text.size(), out);
}

void putScript(const std::string &id, const std::string &data, std::FILE *out) {
    put("<script type=\"application/json\" id=\"" + id + "\">" + data + "</script>\n", out);
}

/* Each text is an element of its own, so that one is only looked at when it is shown. */
void putData(const Project &project, const std::vector<SourceText> &texts, std::FILE *out) {
    putScript("project", nodeData(project), out);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const SourceText &source = texts[i];
        const std::string number = std::to_string(i);
        if (source.error.empty())
            putScript("text" + number, quoted(plainLines(source.text)), out);
        else
            putScript("error" + number, quoted(source.error), out);
    }
}

} // namespace

void writePage(const Project &project, const std::vector<SourceText> &texts, std::FILE *out) {
    const struct {
        std::string_view mark;
        std::function<void()> fill;
    } places[] = {
        {"@TITLE@", [&] { put(markupText(project.name), out); }},
        {"@STYLE@", [&] { put(pageStyle, out); }},
        {"@DATA@", [&] { putData(project, texts, out); }},
        {"@SCRIPT@", [&] { put(pageScript, out); }},
    };
    std::string_view rest = pageMarkup;
    for (const auto &place : places) {
        const std::size_t at = rest.find(place.mark);
        put(rest.substr(0, at), out);
        place.fill();
        rest.remove_prefix(at + place.mark.size());
    }
    put(rest, out);
}

} // namespace browse
