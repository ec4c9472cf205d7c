#include "PlatformState.h"

#include "OperationTable.h"
#include "SimulatedPlatform.h"
#include "StateRule.h"
#include "StateTable.h"

#include <fmt/format.h>

#include <array>
#include <limits>
#include <vector>

namespace simulated {

namespace {

/// Sections of the document, in the order of Injection.
constexpr std::array<const char*, 4> injectionSections{"results", "resultTexts", "errorIndicators", "delaysMs"};

constexpr std::int64_t lowestInt = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t highestInt = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t highestWord = std::numeric_limits<std::uint32_t>::max();

const char* sectionOf(Injection injection)
{
    return injectionSections.at(static_cast<std::size_t>(injection));
}

[[noreturn]] void refuseInjection(const std::string& path, const char* reason)
{
    throw StateError{fmt::format("{}: {}", path, reason)};
}

void checkResult(const std::string& path, ResultKind kind, const Json& value)
{
    switch (kind) {
    case ResultKind::none:
        refuseInjection(path, "this operation returns nothing, so it takes no result");
    case ResultKind::flag:
        return checkRange(path, value, 0, 1);
    case ResultKind::number:
        return checkRange(path, value, lowestInt, highestWord);
    case ResultKind::code:
    case ResultKind::codeAndText:
    case ResultKind::topApiResponse:
        return checkRange(path, value, 0, highestWord);
    }
}

void checkInjectedValue(const std::string& path, Injection injection, ResultKind kind, const Json& value)
{
    switch (injection) {
    case Injection::result:
        return checkResult(path, kind, value);
    case Injection::text:
        if (!takesText(kind)) {
            refuseInjection(path, "this operation returns no text");
        }
        if (!value.is_string()) {
            refuseType(path, "a text", value);
        }
        return;
    case Injection::errorIndicator:
        if (kind != ResultKind::topApiResponse) {
            refuseInjection(path, "this operation returns no error indicator");
        }
        return checkRange(path, value, lowestInt, highestInt);
    case Injection::delay:
        return checkRange(path, value, 0, highestWord);
    }
}

void checkInjections(Injection injection, const Json& patch)
{
    const std::string section = sectionOf(injection);
    if (patch.is_null()) {
        return; // removes them all
    }
    if (!patch.is_object()) {
        refuseType(section, "an object with entries \"interface.operation\"", patch);
    }
    for (const auto& [operation, value] : patch.items()) {
        const ResultKind* kind = findOperation(operation);
        if (kind == nullptr) {
            refuseUnknown(section, operation, operationNames());
        }
        if (!value.is_null()) {
            checkInjectedValue(memberPath(section, operation), injection, *kind, value);
        }
    }
}

std::optional<Injection> injectionOf(const std::string& section)
{
    for (std::size_t i = 0; i < injectionSections.size(); ++i) {
        if (section == injectionSections.at(i)) {
            return static_cast<Injection>(i);
        }
    }
    return std::nullopt;
}

Json withoutInjections(const Json& patch)
{
    Json rest = Json::object();
    for (const auto& [key, value] : patch.items()) {
        if (!injectionOf(key)) {
            rest[key] = value;
        }
    }
    return rest;
}

void check(const Json& patch)
{
    if (!patch.is_object()) {
        refuseType("", "an object", patch);
    }
    for (const auto& [key, value] : patch.items()) {
        if (const auto injection = injectionOf(key)) {
            checkInjections(*injection, value);
        } else if (key == "hits") {
            throw StateError{"hits: read only; set an injection anew to start its count again"};
        } else {
            stateRules().checkMember("", key, value);
        }
    }
}

/// Setting an entry starts its count again, removing it removes the count.
void applyInjections(Json& entries, Json& hits, const Json& patch)
{
    if (patch.is_null()) {
        entries.clear();
        hits.clear();
    }
    for (const auto& [operation, value] : patch.items()) {
        if (value.is_null()) {
            entries.erase(operation);
            hits.erase(operation);
        } else {
            entries[operation] = value;
            hits[operation] = 0;
        }
    }
}

} // namespace

void PlatformState::reset(unsigned channels)
{
    Json document = defaultState(channels);
    Json hits = Json::object();
    for (const char* section : injectionSections) {
        document[section] = Json::object();
        hits[section] = Json::object();
    }
    document["hits"] = std::move(hits);

    const std::lock_guard lock{m_mutex};
    m_document = std::move(document);
    m_channels = channels;
}

Json PlatformState::snapshot() const
{
    const std::lock_guard lock{m_mutex};
    return m_document;
}

unsigned PlatformState::channels() const
{
    const std::lock_guard lock{m_mutex};
    return m_channels;
}

void PlatformState::patch(const Json& patch)
{
    check(patch);
    const Json rest = withoutInjections(patch);

    const std::lock_guard lock{m_mutex};
    stateRules().apply(m_document, rest);
    for (const char* section : injectionSections) {
        if (const auto entries = patch.find(section); entries != patch.end()) {
            applyInjections(m_document[section], m_document["hits"][section], *entries);
        }
    }
}

std::optional<Json> PlatformState::take(Injection injection, const std::string& operation)
{
    const char* section = sectionOf(injection);
    const std::lock_guard lock{m_mutex};
    const Json& entries = m_document[section];
    const auto entry = entries.find(operation);
    if (entry == entries.end()) {
        return std::nullopt;
    }
    Json& hits = m_document["hits"][section][operation];
    hits = hits.get<std::uint64_t>() + 1;
    return *entry;
}

Json* findChannel(Json& document, std::int64_t channel)
{
    Json& channels = document["channels"];
    const auto found = channels.find(std::to_string(channel));
    return found == channels.end() ? nullptr : &*found;
}

} // namespace simulated
