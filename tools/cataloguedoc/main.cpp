#include <algorithm>
#include <exception>
#include <fmt/format.h>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "HandlerSurvey.h"
#include "MessageCatalogue.h"

// Prints the message catalogue as one HTML page that needs nothing but a browser.

namespace {

using Survey = std::map<std::string, ServedBy>;

constexpr const char* head = R"(<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>VornipcAdapter: messages</title>
<meta name="viewport" content="width=device-width, initial-scale=1">
<style>
body { font: 15px/1.5 system-ui, sans-serif; margin: 2rem auto; max-width: 70rem; padding: 0 1rem; color: #222; background: #fff }
h1, h2 { line-height: 1.2 } h2 { margin-top: 2.5rem; border-bottom: 1px solid #ccc }
table { border-collapse: collapse; width: 100% } th { text-align: left; border-bottom: 2px solid #888 }
td, th { padding: .15rem .7rem .15rem 0; vertical-align: top } tr:nth-child(even) td { background: #f6f6f6 }
code, td.n { font-family: ui-monospace, monospace; font-size: 13px; white-space: nowrap }
details { margin: .4rem 0 } summary { cursor: pointer } input { font: inherit; padding: .3rem; width: 20rem }
@media (prefers-color-scheme: dark) { body { background: #181818; color: #ddd } tr:nth-child(even) td { background: #222 } a { color: #8bf } }
@media print { input { display: none } }
</style></head><body>
<h1>Messages of the node IPC protocol</h1>
<p>Generated from the code by <code>make docs</code>. Directions are the radio's: <em>in</em> comes from the node. Offsets
count from the header's first byte; all integers are big-endian. Sizes are of header and body, without the envelope.</p>
<p><input id="filter" placeholder="name or id" aria-label="show messages whose name or id contains this"></p>
)";

constexpr const char* foot = R"(<script>
const filter = document.getElementById("filter");
filter.addEventListener("input", () => {
  const wanted = filter.value.toLowerCase();
  for (const row of document.querySelectorAll("[data-key]")) {
    row.hidden = !row.dataset.key.includes(wanted);
  }
});
const open = () => { const at = document.getElementById(location.hash.slice(1)); if (at) { at.open = true; } };
addEventListener("hashchange", open); open();
</script></body></html>
)";

std::string idText(const MessageDefinition& definition)
{
    return definition.header == MessageHeader::ps ? fmt::format("group {}", definition.id)
                                                  : fmt::format("{:#x}", definition.id);
}

std::string keyOf(const MessageDefinition& definition)
{
    std::string key = definition.name + " " + idText(definition);
    std::transform(key.begin(), key.end(), key.begin(), [](unsigned char c) { return std::tolower(c); });
    return key;
}

std::string linkTo(const std::string& name)
{
    return fmt::format(R"(<a href="#{0}">{0}</a>)", name);
}

/// What the radio does with a message, or why it sends it.
std::string roleOf(const MessageDefinition& definition, const Survey& survey)
{
    if (const auto served = survey.find(definition.name); served != survey.end()) {
        return fmt::format("<code>{}</code>, <code>{}</code>", served->second.method, served->second.file);
    }
    if (definition.direction == MessageDirection::in) {
        return "not received by this radio";
    }
    const auto& all = messageCatalogue();
    const auto request =
        std::find_if(all.begin(), all.end(), [&](const auto& e) { return e.answer == definition.name; });
    return request != all.end() ? "answers " + linkTo(request->name) : "sent by the radio of its own accord";
}

void writeArea(std::ostream& out, MessageArea area, const Survey& survey)
{
    out << fmt::format("<h2 id=\"{0}\">{0}</h2>\n<table><tr><th>id<th>name<th>direction<th>size<th>answer<th>handler\n",
                       toString(area));
    for (const MessageDefinition& definition : messageCatalogue()) {
        if (definition.area == area) {
            out << fmt::format("<tr data-key=\"{}\"><td class=\"n\">{}<td>{}<td>{}<td>{}<td>{}<td>{}\n",
                               keyOf(definition), idText(definition), linkTo(definition.name),
                               toString(definition.direction), definition.size,
                               definition.answer.empty() ? "" : linkTo(definition.answer), roleOf(definition, survey));
        }
    }
    out << "</table>\n";
}

/// Whether a field belongs to an element of an array of records behind the first; they are all alike.
bool isRepetition(const std::string& name)
{
    for (std::size_t at = name.find(".value"); at != std::string::npos; at = name.find(".value", at + 1)) {
        const std::size_t digit = at + std::string_view(".value").size();
        if (digit < name.size() && name[digit] >= '1' && name[digit] <= '9') {
            return true;
        }
    }
    return false;
}

void writeLayout(std::ostream& out, const MessageDefinition& definition)
{
    out << fmt::format(
        "<details id=\"{0}\" data-key=\"{1}\"><summary><strong>{0}</strong> {2}, {3}, {4} bytes</summary>\n"
        "<table><tr><th>offset<th>type<th>field<th>unit<th>default\n",
        definition.name, keyOf(definition), idText(definition), toString(definition.direction), definition.size);
    std::size_t repeated = 0;
    const auto message = definition.create();
    for (const MessageField& field : message->fields()) {
        if (isRepetition(field.name())) {
            ++repeated;
            continue;
        }
        const std::string count = field.count() ? fmt::format("[{}]", *field.count()) : "";
        out << fmt::format("<tr><td class=\"n\">{}<td class=\"n\">{}{}<td><code>{}</code><td>{}<td>{}\n",
                           field.offset(), toString(field.type()), count, field.name(), field.unit(),
                           field.count() ? 0 : field.value());
    }
    out << "</table>\n";
    if (repeated > 0) {
        out << fmt::format("<p>{} more fields: the further elements, value1 and so on, are laid out as value0.</p>\n",
                           repeated);
    }
    out << "</details>\n";
}

void writePage(std::ostream& out, const Survey& survey)
{
    out << head;
    constexpr MessageArea areas[] = {MessageArea::equipment, MessageArea::power,       MessageArea::traffic,
                                     MessageArea::alarms,    MessageArea::protection,  MessageArea::upgrade,
                                     MessageArea::mib,       MessageArea::testcommand, MessageArea::ps};
    for (const MessageArea area : areas) {
        writeArea(out, area, survey);
    }
    out << "<h2 id=\"layouts\">Layouts</h2>\n";
    for (const MessageDefinition& definition : messageCatalogue()) {
        writeLayout(out, definition);
    }
    out << foot;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        if (argc != 2) {
            std::cerr << "usage: cataloguedoc FILE.html\n";
            return 2;
        }
        std::ofstream page(argv[1]);
        writePage(page, surveyHandlers());
        page.close();
        if (!page) {
            std::cerr << "cataloguedoc: cannot write " << argv[1] << '\n';
            return 1;
        }
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "cataloguedoc: " << error.what() << '\n';
        return 1;
    }
}
