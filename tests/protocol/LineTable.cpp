#include "LineTable.h"

#include "TableFile.h"

#include <map>
#include <regex>

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

/// Turns a pattern of the table into a regular expression.
std::string expressionOf(const std::string& pattern, const std::string& method)
{
    static const std::map<std::string, std::string> placeholders{
        {"<n>", "-?[0-9]+"}, {"<x>", "[0-9a-f]+"}, {"<name>", "[^ ]+"}, {"<bool>", "[01]"}, {"<text>", "[^]*"}};
    std::string expression;
    for (std::size_t i = 0; i < pattern.size();) {
        const std::string rest = pattern.substr(i);
        const std::string token = pattern[i] == '<' ? rest.substr(0, rest.find('>') + 1) : "";
        if (const auto known = placeholders.find(token); known != placeholders.end()) {
            expression += known->second;
        } else if (token == "<method>") {
            expression += method;
        } else if (token.starts_with("<message ")) {
            expression += token.substr(9, token.size() - 10);
        } else {
            expression += std::string("^$\\.*+?()[]{}|").find(pattern[i]) != std::string::npos ? "\\" : "";
            expression += pattern[i++];
            continue;
        }
        i += token.size();
    }
    return expression;
}

} // namespace

std::string faultOfTraceLine(const std::string& tag, int level, const std::string& method, const std::string& text)
{
    std::string nearest = "no such line";
    for (const std::string& key : {method, std::string("*")}) {
        const auto [begin, end] = rows().equal_range(key);
        for (auto row = begin; row != end; ++row) {
            if (std::regex_match(text, std::regex(expressionOf(row->second.pattern, method)))) {
                if (row->second.tag == tag && row->second.level == level) {
                    return {};
                }
                nearest = row->second.place + " has another tag or level";
            }
        }
    }
    return nearest;
}
