#include "TableFile.h"

#include <fstream>

std::vector<std::string> TableLine::words() const
{
    std::vector<std::string> words;
    std::size_t begin = 0;
    while ((begin = text.find_first_not_of(' ', begin)) != std::string::npos) {
        const bool quoted = text[begin] == '"';
        begin += quoted ? 1 : 0;
        const std::size_t end = text.find(quoted ? '"' : ' ', begin);
        if (quoted && end == std::string::npos) {
            refuse("a quote without its end");
        }
        words.push_back(text.substr(begin, end - begin));
        begin = end == std::string::npos ? text.size() : end + 1;
    }
    return words;
}

std::vector<TableLine> linesOfTable(const std::string& fileName)
{
    std::ifstream file(std::string(PROTOCOL_DIR) + "/" + fileName);
    if (!file) {
        throw std::runtime_error("cannot open the table " + fileName);
    }
    std::vector<TableLine> lines;
    int number = 0;
    for (std::string text; std::getline(file, text);) {
        ++number;
        const std::size_t begin = text.find_first_not_of(' ');
        if (begin != std::string::npos && text[begin] != '#') {
            const std::size_t end = text.find_last_not_of(' ');
            lines.push_back({text.substr(begin, end - begin + 1), fileName + ":" + std::to_string(number)});
        }
    }
    return lines;
}

std::vector<TableLine> linesOfSection(const std::string& fileName, const std::string& section)
{
    std::vector<TableLine> lines;
    bool inside = false;
    for (const TableLine& line : linesOfTable(fileName)) {
        if (line.text.front() == '[') {
            inside = line.text == "[" + section + "]";
        } else if (inside) {
            lines.push_back(line);
        }
    }
    if (lines.empty()) {
        throw std::runtime_error(fileName + " has no section [" + section + "]");
    }
    return lines;
}

std::int64_t numberOf(const std::string& word)
{
    std::size_t end = 0;
    const std::int64_t number = std::stoll(word, &end, 0);
    if (end != word.size()) {
        throw std::runtime_error("not a number: " + word);
    }
    return number;
}
