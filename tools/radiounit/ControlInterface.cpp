#include "CommandLine.h"

#if VORNIPC_WITH_CONTROL

#include "ControlInterface.h"

#include <charconv>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <optional>

#include "Events.h"
#include "JsonInput.h"
#include "ModuleInterface.h"

namespace radiounit {
namespace {

using simulated::Json;

constexpr int highestTraceLevel = 6;

void refuseQuery(const HttpCall& call)
{
    if (!call.query.empty()) {
        throw HttpError{httpBadRequest,
                        fmt::format("unknown parameter {}; the path takes none", call.query.begin()->first)};
    }
}

/// The number of the first record asked for.
std::uint64_t since(const HttpCall& call)
{
    if (call.query.empty()) {
        return 0;
    }
    const auto& [name, value] = *call.query.begin();
    std::uint64_t number = 0;
    const char* end = value.data() + value.size();
    const auto [stopped, error] = std::from_chars(value.data(), end, number);
    if (call.query.size() > 1 || name != "since" || error != std::errc{} || stopped != end) {
        throw HttpError{httpBadRequest, fmt::format("{}={}: the one parameter is since, the number of the first record "
                                                    "wanted, such as ?since=0",
                                                    name, value)};
    }
    return number;
}

Json readerFacts(const VornipcLinkFacts& facts)
{
    using Reader = VornipcLinkFacts::Reader;
    if (facts.reader != Reader::ended) {
        return {{"state", facts.reader == Reader::running ? "running" : "none"}};
    }
    Json lastMessage;
    if (facts.lastMessage) {
        lastMessage = {{"id", nullptr}, {"device", facts.lastMessage->device}, {"length", facts.lastMessage->length}};
        if (facts.lastMessage->id) {
            lastMessage["id"] = *facts.lastMessage->id;
        }
    }
    return {{"state", "ended"}, {"reason", facts.reason}, {"lastMessage", std::move(lastMessage)}};
}

} // namespace

ControlInterface::ControlInterface(asio::ip::tcp::acceptor acceptor, Unit unit)
    : m_unit{std::move(unit)}, m_server{std::move(acceptor), routes()}
{
}

std::vector<HttpRoute> ControlInterface::routes()
{
    auto& platform = m_unit.platform;
    const auto withoutQuery = [](auto answer) {
        return [answer](HttpCall& call) {
            refuseQuery(call);
            return answer(call);
        };
    };
    return {
        {"GET", "/api/module", withoutQuery([this](HttpCall&) { return module(); })},
        {"GET", "/api/state", withoutQuery([&platform](HttpCall&) { return platform.state(); })},
        {"PATCH", "/api/state", withoutQuery([this](HttpCall& call) { return patchState(call); })},
        {"POST", "/api/events", withoutQuery([this](HttpCall& call) { return raise(call); })},
        {"GET", "/api/calls", [&platform](HttpCall& call) { return platform.calls(since(call)); }},
        {"GET", "/api/trace", [&platform](HttpCall& call) { return platform.traceLines(since(call)); }},
        {"PUT", "/api/trace/level", withoutQuery([this](HttpCall& call) { return setTraceLevel(call); })},
        {"POST", "/api/shutdown", withoutQuery([this](HttpCall& call) { return shutDown(call); })},
    };
}

/// The module, which may still be starting.
ModuleSlot::Initialised ControlInterface::awaitModule()
{
    try {
        std::optional<WorkerPool::Waiting> waiting;
        if (!m_unit.module.settled()) {
            waiting.emplace(m_server.workers());
        }
        return m_unit.module.await();
    } catch (const ModuleSlot::NeverCame& gone) {
        throw HttpError{httpConflict, gone.what()};
    } catch (const WorkerPool::TooManyWaiting& error) {
        throw HttpError{httpUnavailable, error.what()};
    }
}

Json ControlInterface::module()
{
    const auto [module, initResult] = awaitModule();
    const auto facts = module.linkFacts();
    const auto& registered = module.module();
    return {{"moduleId", registered.moduleId()},
            {"name", registered.moduleName()},
            {"channels", facts.channels},
            {"moduleInit", initResult},
            {"outgoingIpcMessagesAllowed", facts.outgoingIpcMessagesAllowed},
            {"vornipcWhiteListActive", facts.vornipcWhiteListActive},
            {"slotNumber", facts.slotNumber},
            {"senderId", facts.senderId},
            {"nodes", m_unit.nodes()},
            {"reader", readerFacts(facts)}};
}

Json ControlInterface::patchState(const HttpCall& call)
{
    try {
        m_unit.platform.patchState(parseJsonObject(call.body));
    } catch (const JsonError& error) {
        throw HttpError{httpBadRequest, error.what()};
    } catch (const simulated::StateError& error) {
        throw HttpError{httpBadRequest, error.what()};
    }
    return m_unit.platform.state();
}

Json ControlInterface::raise(const HttpCall& call)
{
    try {
        const Json event = parseJsonObject(call.body);
        const auto initialised = awaitModule();
        const WorkerPool::Waiting waiting{m_server.workers()};
        return {{"result", raiseEvent({m_unit.platform, initialised.module}, event)}};
    } catch (const JsonError& error) {
        throw HttpError{httpBadRequest, error.what()};
    } catch (const EventError& error) {
        throw HttpError{httpBadRequest, error.what()};
    } catch (const NobodyRegistered& error) {
        throw HttpError{httpConflict, error.what()};
    } catch (const WorkerPool::TooManyWaiting& error) {
        throw HttpError{httpUnavailable, error.what()};
    }
}

Json ControlInterface::setTraceLevel(const HttpCall& call)
{
    try {
        Json wanted = parseJsonObject(call.body);
        const auto tag = wanted.find("tag");
        const auto level = wanted.find("level");
        constexpr std::size_t keys = 2;
        if (tag == wanted.end() || !tag->is_string() || level == wanted.end() || !level->is_number_unsigned() ||
            level->get<std::uint64_t>() > highestTraceLevel || wanted.size() != keys) {
            throw JsonError{
                fmt::format(R"(expected {{"tag":TEXT,"level":0 to {}}}, "*" is every tag)", highestTraceLevel)};
        }
        const auto& name = tag->get_ref<const std::string&>();
        if (m_unit.platform.setTraceLevel(name, level->get<int>()) == 0 && name != "*") {
            throw JsonError{fmt::format("tag: no trace object is called \"{}\"; there are {}", name,
                                        fmt::join(m_unit.platform.traceTags(), ", "))};
        }
        return wanted;
    } catch (const JsonError& error) {
        throw HttpError{httpBadRequest, error.what()};
    }
}

Json ControlInterface::shutDown(HttpCall& call) const
{
    call.afterwards = m_unit.requestStop;
    return {{"stopping", true}};
}

} // namespace radiounit

#endif
