#include "StateRule.h"

#include "NearestName.h"
#include "SimulatedPlatform.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace simulated {

namespace {

/// A value for an error text. Lists and objects are only named: they may be nested deeper than they can be written.
std::string shown(const Json& value)
{
    if (value.is_array()) {
        return "a list";
    }
    if (value.is_object()) {
        return "an object";
    }
    constexpr std::size_t longest = 60;
    std::string text = toText(value);
    if (text.size() > longest) {
        std::size_t cut = longest;
        while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0U) == 0x80U) {
            --cut; // not through a character
        }
        text.resize(cut);
        text += "...";
    }
    return text;
}

} // namespace

std::string memberPath(const std::string& path, const std::string& key)
{
    return path.empty() ? key : path + "." + key;
}

void refuseUnknown(const std::string& path, const std::string& key, const std::vector<std::string>& known)
{
    throw StateError{
        fmt::format("{}: unknown, the nearest known name is \"{}\"", memberPath(path, key), nearestName(key, known))};
}

void refuseType(const std::string& path, const std::string& expected, const Json& got)
{
    throw StateError{fmt::format("{}: {} expected, got {}", path.empty() ? "the patch" : path, expected, shown(got))};
}

void checkRange(const std::string& path, const Json& value, std::int64_t lowest, std::int64_t highest)
{
    const std::string expected = fmt::format("a whole number from {} to {}", lowest, highest);
    if (!value.is_number_integer()) {
        refuseType(path, expected, value);
    }
    const bool beyondSigned = value.is_number_unsigned() &&
                              value.get<std::uint64_t>() > std::uint64_t{std::numeric_limits<std::int64_t>::max()};
    if (beyondSigned || value.get<std::int64_t>() < lowest || value.get<std::int64_t>() > highest) {
        throw StateError{
            fmt::format("{}: {} is out of range, {} to {} are allowed", path, shown(value), lowest, highest)};
    }
}

StateRule StateRule::flag(bool byDefault)
{
    return {Kind::flag, byDefault};
}

StateRule StateRule::text(std::size_t widest, std::string byDefault)
{
    StateRule rule{Kind::text, std::move(byDefault)};
    rule.m_highest = static_cast<std::int64_t>(widest);
    return rule;
}

StateRule StateRule::anyText()
{
    return text(std::numeric_limits<std::uint32_t>::max(), "");
}

StateRule StateRule::list(std::size_t shortest, std::size_t longest, StateRule element, Json byDefault)
{
    StateRule rule{Kind::list, std::move(byDefault)};
    rule.m_lowest = static_cast<std::int64_t>(shortest);
    rule.m_highest = static_cast<std::int64_t>(longest);
    rule.m_element.push_back(std::move(element));
    return rule;
}

StateRule StateRule::object(Members members)
{
    Json defaults = Json::object();
    for (const auto& [key, rule] : members) {
        defaults[key] = rule.m_default;
    }
    StateRule rule{Kind::object, std::move(defaults)};
    rule.m_members = std::move(members);
    return rule;
}

StateRule StateRule::record(Members members)
{
    StateRule rule = object(std::move(members));
    rule.m_kind = Kind::record;
    return rule;
}

void StateRule::check(const std::string& path, const Json& patch) const
{
    if (patch.is_null()) {
        throw StateError{fmt::format("{}: cannot be removed; only entries of results, resultTexts, errorIndicators and "
                                     "delaysMs can",
                                     path.empty() ? "the state" : path)};
    }
    switch (m_kind) {
    case Kind::flag:
        if (!patch.is_boolean()) {
            refuseType(path, "true or false", patch);
        }
        return;
    case Kind::number:
        return checkRange(path, patch, m_lowest, m_highest);
    case Kind::text:
        if (!patch.is_string()) {
            refuseType(path, "a text", patch);
        }
        if (const auto size = patch.get_ref<const std::string&>().size(); size > static_cast<std::size_t>(m_highest)) {
            throw StateError{fmt::format("{}: {} bytes are too long, {} fit", path, size, m_highest)};
        }
        return;
    case Kind::list:
        return checkList(path, patch);
    case Kind::object:
    case Kind::record:
        return checkMembers(path, patch);
    }
}

void StateRule::checkList(const std::string& path, const Json& patch) const
{
    const auto shortest = static_cast<std::size_t>(m_lowest);
    const auto longest = static_cast<std::size_t>(m_highest);
    const std::string expected =
        shortest == longest ? fmt::format("a list of {}", longest) : fmt::format("a list of at most {}", longest);
    if (!patch.is_array()) {
        refuseType(path, expected, patch);
    }
    if (patch.size() < shortest || patch.size() > longest) {
        throw StateError{fmt::format("{}: {} expected, got {} elements", path, expected, patch.size())};
    }
    for (std::size_t i = 0; i < patch.size(); ++i) {
        m_element.front().check(fmt::format("{}[{}]", path, i), patch[i]);
    }
}

void StateRule::checkMembers(const std::string& path, const Json& patch) const
{
    if (!patch.is_object()) {
        refuseType(path, "an object", patch);
    }
    for (const auto& [key, value] : patch.items()) {
        checkMember(path, key, value);
    }
    if (m_kind == Kind::record) {
        for (const auto& [key, unused] : m_members) {
            if (!patch.contains(key)) {
                throw StateError{
                    fmt::format("{}: missing; a list is given with all that is in it", memberPath(path, key))};
            }
        }
    }
}

void StateRule::checkMember(const std::string& path, const std::string& key, const Json& patch) const
{
    const StateRule* rule = member(key);
    if (rule == nullptr) {
        std::vector<std::string> known;
        for (const auto& [name, unused] : m_members) {
            known.push_back(name);
        }
        refuseUnknown(path, key, known);
    }
    rule->check(memberPath(path, key), patch);
}

const StateRule* StateRule::member(const std::string& key) const
{
    const auto found =
        std::find_if(m_members.begin(), m_members.end(), [&](const auto& entry) { return entry.first == key; });
    return found == m_members.end() ? nullptr : &found->second;
}

void StateRule::apply(Json& target, const Json& patch) const
{
    if (m_kind != Kind::object) {
        target = patch;
        return;
    }
    for (const auto& [key, value] : patch.items()) {
        if (const auto place = target.find(key); place != target.end()) {
            member(key)->apply(*place, value);
        }
    }
}

} // namespace simulated
