#include "LineTable.h"

#include "TableFile.h"

#include <map>
#include <string_view>

namespace {

struct Row {
    std::string tag;
    int level;
    std::string pattern;
    std::string place;
};

using RowsByMethod = std::multimap<std::string, Row>;

const RowsByMethod& rows()
{
    static const RowsByMethod table = [] {
        RowsByMethod read;
        for (const TableLine& line : linesOfTable("lines.txt")) {
            const auto words = line.words();
            if (words.size() != 4) {
                line.refuse("a line has tag, level, method and text");
            }
            read.emplace(words[2], Row{words[0], static_cast<int>(numberOf(words[1])), words[3], line.place});
        }
        return read;
    }();
    return table;
}

/// Whether a character may stand in the place of a placeholder.
using Accepts = bool (*)(char);

Accepts acceptedBy(std::string_view placeholder)
{
    static const std::map<std::string_view, Accepts> placeholders{
        {"<n>", [](char c) { return c == '-' || (c >= '0' && c <= '9'); }},
        {"<x>", [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); }},
        {"<name>", [](char c) { return c != ' '; }},
        {"<bool>", [](char c) { return c == '0' || c == '1'; }},
        {"<text>", [](char /*c*/) { return true; }}};
    const auto found = placeholders.find(placeholder);
    return found != placeholders.end() ? found->second : nullptr;
}

/// Whether the text is what the pattern says.
bool matches(std::string_view text, std::string_view pattern, std::string_view method)
{
    if (pattern.empty()) {
        return text.empty();
    }
    const std::string_view token = pattern.front() == '<' ? pattern.substr(0, pattern.find('>') + 1) : "";
    if (const Accepts accepts = acceptedBy(token)) {
        std::size_t length = token == "<text>" ? 0 : 1;
        for (std::size_t i = 0; i < length; ++i) {
            if (i >= text.size() || !accepts(text[i])) {
                return false;
            }
        }
        for (; !matches(text.substr(length), pattern.substr(token.size()), method); ++length) {
            if (length >= text.size() || !accepts(text[length])) {
                return false;
            }
        }
        return true;
    }
    constexpr std::string_view message = "<message ";
    const bool isMessage = token.starts_with(message);
    const std::string_view literal = token == "<method>" ? method
                                     : isMessage ? token.substr(message.size(), token.size() - message.size() - 1)
                                                 : pattern.substr(0, 1);
    const std::size_t consumed = token == "<method>" || isMessage ? token.size() : 1;
    return text.starts_with(literal) && matches(text.substr(literal.size()), pattern.substr(consumed), method);
}

} // namespace

std::string faultOfTraceLine(const std::string& tag, int level, const std::string& method, const std::string& text)
{
    std::string nearest = "no such line";
    for (const std::string& key : {method, std::string("*")}) {
        const auto [begin, end] = rows().equal_range(key);
        for (auto row = begin; row != end; ++row) {
            if (matches(text, row->second.pattern, method)) {
                if (row->second.tag == tag && row->second.level == level) {
                    return {};
                }
                nearest = row->second.place + " has another tag or level";
            }
        }
    }
    return nearest;
}
