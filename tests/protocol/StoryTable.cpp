#include "StoryTable.h"

#include "TableFile.h"
#include "WireTable.h"

namespace {

/// Chooses between A and B wherever the text has them between the two brackets, "{A|B}".
std::string chosen(const std::string& text, const std::string& open, const std::string& close, int ct)
{
    std::string result;
    std::size_t done = 0;
    for (std::size_t begin = 0; (begin = text.find(open, begin)) != std::string::npos;) {
        const std::size_t first = begin + open.size();
        const std::size_t end = text.find_first_of("{}", first);
        const std::size_t bar = text.find('|', first);
        if (end == std::string::npos || bar > end || text.compare(end, close.size(), close) != 0) {
            ++begin;
            continue;
        }
        result += text.substr(done, begin - done);
        result += ct == 1 ? text.substr(first, bar - first) : text.substr(bar + 1, end - bar - 1);
        begin = done = end + close.size();
    }
    return result + text.substr(done);
}

/// Puts the channel in the place of its signs.
std::string forChannel(const std::string& text, int ct)
{
    std::string result;
    for (const char sign : chosen(chosen(text, "{{", "}}", ct), "{", "}", ct)) {
        result += sign == '$' ? std::to_string(ct) : sign == '@' ? std::to_string(ct - 1) : std::string(1, sign);
    }
    return result;
}

/// The words of a message; blanks inside of double quotes do not part them.
std::vector<std::string> wordsOf(const std::string& message)
{
    std::vector<std::string> words(1);
    bool quoted = false;
    for (const char sign : message) {
        quoted = quoted != (sign == '"');
        if (sign == ' ' && !quoted) {
            words.emplace_back();
        } else {
            words.back() += sign;
        }
    }
    std::erase(words, "");
    return words;
}

/// A field's name as the wire table has it: header fields with their header, records of an array by number.
std::string nameInTable(const WireTableMessage& message, std::string name)
{
    if (const auto record = name.find("]."); record != std::string::npos) {
        name.erase(record, 1);
        name.replace(name.find('['), 1, ".value");
    }
    const bool isHeaderField =
        name.find('.') == std::string::npos && message.header == "SignalHeader" &&
        std::string(" slot sigId senderId seqNr spare1 ct ").find(" " + name + " ") != std::string::npos;
    return isHeaderField ? "SignalHeader." + name : name;
}

/// Adds a field: a number, a text in double quotes, or the first bytes of an array in hexadecimal digits.
void add(WireTableMessage::Values& values, const WireTableMessage& message, const std::string& word)
{
    const auto equals = word.find('=');
    const std::string name = nameInTable(message, word.substr(0, equals));
    const std::string value = word.substr(equals + 1);
    const bool isText = value.starts_with('"');
    bool isArray = false;
    for (const WireRow& row : message.fields) {
        isArray = isArray || (row.name == name && row.count > 0);
    }
    if (!isText && !isArray) {
        values[name] = numberOf(value);
        return;
    }
    const std::size_t step = isText ? 1 : 2;
    for (std::size_t at = isText ? 1 : 2, i = 0; at + (isText ? 1 : 0) < value.size(); at += step, ++i) {
        const std::int64_t byte = isText ? static_cast<unsigned char>(value[at]) : numberOf("0x" + value.substr(at, 2));
        values[name + "[" + std::to_string(i) + "]"] = byte;
    }
}

} // namespace

std::vector<Story> storiesOfChannel(int ct)
{
    using Kind = Story::Deed::Kind;
    std::vector<Story> stories;
    for (const TableLine& line : linesOfTable("exchanges.txt")) {
        const std::string text = forChannel(line.text, ct);
        const std::string word = text.substr(0, text.find(' '));
        const std::string rest = word.size() < text.size() ? text.substr(word.size() + 1) : "";
        if (word == "story") {
            stories.emplace_back().title = line.place + " " + rest;
        } else if (word == "fresh") {
            stories.back().fresh = true;
        } else if (word == "capability") {
            stories.back().capability = rest;
        } else if (word == "given" || word == "event" || word == "in") {
            stories.back().deeds.push_back({word == "given" ? Kind::given
                                            : word == "in"  ? Kind::message
                                                            : Kind::event,
                                            rest});
        } else if (word == "before") {
            const bool isEvent = rest.starts_with("event ");
            stories.back().deeds.push_back({isEvent ? Kind::event : Kind::message, rest.substr(isEvent ? 6 : 0), true});
        } else {
            stories.back().steps.push_back(text);
        }
    }
    return stories;
}

std::string nameOfMessage(const std::string& message)
{
    for (const std::string& word : wordsOf(message)) {
        if (word.find('=') == std::string::npos) {
            return word;
        }
    }
    throw std::runtime_error("no message: " + message);
}

std::string bytesOfMessage(const std::string& message, const std::string& header)
{
    const WireTableMessage& definition = wireTableMessage(nameOfMessage(message));
    WireTableMessage::Values values;
    for (const std::string& fields : {header, message}) {
        for (const std::string& word : wordsOf(fields)) {
            if (word.find('=') != std::string::npos && !word.starts_with("device=")) {
                add(values, definition, word);
            }
        }
    }
    return definition.encode(values);
}
