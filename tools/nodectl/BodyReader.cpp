#include "BodyReader.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Failure.h"
#include "FieldTree.h"
#include "Suggestion.h"

namespace nodectl {

namespace {

using Json = nlohmann::ordered_json;

/// Our own bound; the deepest printed message has six levels.
constexpr int deepestNesting = 16;

[[noreturn]] void refuse(const std::string& text)
{
    throw Failure(ExitCode::wrongUsage, "body: " + text);
}

std::string kindOf(const Json& value)
{
    return value.is_number() ? value.dump() : value.type_name();
}

/// Refuses what the parser alone would let pass: endless nesting, and a name that stands twice.
class BodyRules {
public:
    bool operator()(int depth, Json::parse_event_t event, const Json& parsed)
    {
        if (depth >= deepestNesting) {
            refuse(fmt::format("nested deeper than {} levels", deepestNesting));
        }
        const auto level = static_cast<std::size_t>(depth);
        m_names.resize(std::max(m_names.size(), level + 2));
        if (event == Json::parse_event_t::object_start) {
            m_names[level + 1].clear();
        } else if (event == Json::parse_event_t::key && !m_names[level].insert(parsed.get<std::string>()).second) {
            refuse(inQuotes(parsed.get<std::string>()) + " stands twice in one object");
        }
        return true;
    }

private:
    std::vector<std::set<std::string>> m_names; ///< names seen so far in the open object of each level
};

Json parse(std::string_view text)
{
    try {
        return Json::parse(text, [rules = BodyRules()](int depth, Json::parse_event_t event, Json& parsed) mutable {
            return rules(depth, event, parsed);
        });
    } catch (const Json::exception& error) {
        // "[json.exception.parse_error.101] parse error at line 1, column 2: syntax error while ...; last read: '...'"
        std::string_view reason = error.what();
        reason.remove_prefix(std::min(reason.find("] ") + 2, reason.size()));
        reason = reason.substr(0, reason.find("; last read"));
        refuse(fmt::format("not valid JSON, {}", reason));
    }
}

std::int64_t integerFrom(const Json& value, const FieldTree& target, const std::string& path)
{
    const MessageField& field = *target.field;
    if (!value.is_number_integer()) {
        refuse(fmt::format("{} takes an integer ({}), not {}", path, toString(field.type()), kindOf(value)));
    }
    const bool tooLarge =
        value.is_number_unsigned() && value.get<std::uint64_t>() > static_cast<std::uint64_t>(field.maximum());
    const bool tooSmall = !value.is_number_unsigned() && value.get<std::int64_t>() < field.minimum();
    if (tooLarge || tooSmall) {
        refuse(fmt::format("{} is {}, outside {} to {} ({})", path, value.dump(), field.minimum(), field.maximum(),
                           toString(field.type())));
    }
    return value.get<std::int64_t>();
}

/// Index that "value7" stands for; none for any other name, "value07" included.
std::optional<std::size_t> automaticIndex(const std::string& name, std::size_t count)
{
    for (std::size_t index = 0; index < count; ++index) {
        if (name == fmt::format("value{}", index)) {
            return index;
        }
    }
    return std::nullopt;
}

void readArray(const Json& value, const FieldTree& target)
{
    const MessageField& field = *target.field;
    if (value.is_array()) {
        if (value.size() > field.elements()) {
            refuse(fmt::format("{} has {} elements, at most {} fit", target.path, value.size(), field.elements()));
        }
        for (std::size_t index = 0; index < value.size(); ++index) {
            field.set(integerFrom(value[index], target, fmt::format("{}[{}]", target.path, index)), index);
        }
    } else if (value.is_object()) {
        for (const auto& [name, element] : value.items()) {
            const auto index = automaticIndex(name, field.elements());
            if (!index) {
                refuse(fmt::format("{} has no element {}; its elements are value0 to value{}", target.path,
                                   inQuotes(name), field.elements() - 1));
            }
            field.set(integerFrom(element, target, target.path + "." + name), *index);
        }
    } else {
        refuse(fmt::format("{} takes a list of up to {} integers ({}), or an object with value0 to value{}, not {}",
                           target.path, field.elements(), toString(field.type()), field.elements() - 1, kindOf(value)));
    }
}

/// Path of a field with this name somewhere below the group; empty where there is none.
std::string pathBelow(const FieldTree& group, const std::string& name)
{
    for (const FieldTree& member : group.members) {
        if (member.name == name) {
            return member.path;
        }
        if (std::string path = pathBelow(member, name); !path.empty()) {
            return path;
        }
    }
    return {};
}

[[noreturn]] void refuseUnknown(const std::string& name, const FieldTree& group, const std::string& owner)
{
    const std::string nested = pathBelow(group, name);
    const std::string where = group.path.empty() ? owner : group.path;
    const std::string hint = nested.empty() ? didYouMean(name, group.memberNames())
                                            : fmt::format("; it stands inside its group, at {}", nested);
    refuse(fmt::format("{} has no field {}{}", where, inQuotes(name), hint));
}

void readGroup(const Json& value, const FieldTree& group, const std::string& owner);

void readMember(const Json& value, const FieldTree& target, const std::string& owner)
{
    if (!target.field) {
        readGroup(value, target, owner);
    } else if (target.field->count()) {
        readArray(value, target);
    } else {
        target.field->set(integerFrom(value, target, target.path));
    }
}

void readGroup(const Json& value, const FieldTree& group, const std::string& owner)
{
    if (value.is_array() && group.isListOfGroups()) {
        if (value.size() > group.members.size()) {
            refuse(fmt::format("{} has {} elements, at most {} fit", group.path, value.size(), group.members.size()));
        }
        for (std::size_t index = 0; index < value.size(); ++index) {
            readMember(value[index], group.members[index], owner);
        }
        return;
    }
    if (!value.is_object()) {
        refuse(fmt::format("{} takes an object{}, not {}", group.path.empty() ? owner : group.path,
                           group.isListOfGroups() ? " or a list" : "", kindOf(value)));
    }
    for (const auto& [name, element] : value.items()) {
        const FieldTree* member = group.find(name);
        if (member == nullptr) {
            refuseUnknown(name, group, owner);
        }
        readMember(element, *member, owner);
    }
}

/// A whole printed message stands for its body, which is the last value of the frame.
const Json& withoutFrame(const Json& body, const MessageDefinition& definition, const AnyMessage& message)
{
    const Json frame = Json::parse(message.print());
    if (!body.is_object() || !body.contains(frame.items().begin().key())) {
        return body;
    }
    for (const auto& [name, value] : frame.items()) {
        if (!body.contains(name) || body.size() != frame.size() || (!value.is_object() && body[name] != value)) {
            refuse(fmt::format("this is not a printed {}; give its fields alone, or a message that was printed as one",
                               definition.name));
        }
    }
    return body[std::prev(frame.end()).key()];
}

} // namespace

void readBody(std::string_view json, const MessageDefinition& definition, AnyMessage& message)
{
    const Json body = parse(json);
    readGroup(withoutFrame(body, definition, message), fieldTree(message), definition.name);
}

} // namespace nodectl
