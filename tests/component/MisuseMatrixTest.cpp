#include "MessageCatalogue.h"
#include "support/ModuleTest.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <random>
#include <set>

namespace {

/// Every message that the node may send, against every operation that fails and every interface that is not there.
class MisuseMatrix : public ModuleTest {
protected:
    /// Delivers every message for a channel and checks that those that are to be answered are. What the module does only
    /// once, or only for another component of the radio software, it does again each time.
    void deliverCatalogue(std::uint32_t ct)
    {
        keepRadioUp();
        module()->resetSelfTestCheckPerformed();
        for (const MessageDefinition& definition : messageCatalogue()) {
            if (definition.direction != MessageDirection::out) {
                SCOPED_TRACE(definition.name);
                module()->setOutgoingIpcMessagesAllowed(true); // some of them close it
                newlySent();
                deliverAndSettle(bufferOf(definition, ct), definition.header == MessageHeader::ps ? 1 : 0);
                checkAnswer(definition, ct);
            }
        }
        for (const std::string& closing : {mmuState(3), "00200039" + head(0)}) { // the link closes out of service
            deliver(closing);
        }
        settle();
        std::array<int, 30> capacities{};
        module()->getAcmCapacities(1, capacities.data(), [](const SRadioFrameItem&, unsigned) { return true; });
    }

    /// A request for a channel that a unit can have is answered, whatever else is amiss.
    void checkAnswer(const MessageDefinition& definition, std::uint32_t ct)
    {
        const MessageDefinition* answer = findMessage(definition.answer);
        if (answer == nullptr || ct < 1 || ct > 2) {
            return;
        }
        const bool isPs = answer->header == MessageHeader::ps;
        const std::string beginning = isPs ? words(1) : toNode(word(answer->id)) + head(ct);
        const auto sent = newlySent();
        ASSERT_EQ(sent.size(), 1U);
        EXPECT_TRUE(sent[0].starts_with(beginning)) << sent[0];
        EXPECT_EQ(sent[0].size(), 2 * ((isPs ? 4 : 8) + answer->size));
    }

    static std::string hexId(const MessageDefinition& definition)
    {
        const std::string digits = word(definition.id);
        return digits.substr(digits.find_first_not_of('0'));
    }

    /// A message with a body that gets as far into the platform as it can.
    std::string bufferOf(const MessageDefinition& definition, std::uint32_t ct)
    {
        const std::string body = definition.header == MessageHeader::ps ? words(ct, 1, 1) : bodyOf(definition.name);
        const std::size_t bodySize = definition.size - 24;
        const std::string padded = (body + zeros(bodySize)).substr(0, 2 * bodySize);
        if (definition.header == MessageHeader::ps) {
            return "01 02 03 10 05 03 0007 01 02 0040 00 00 00 00 0008 000c" + word(definition.id) + padded;
        }
        return word(definition.id) + head(ct) + padded;
    }

    std::string bodyOf(const std::string& name)
    {
        const std::map<std::string, std::string> acting{
            {"ADSSelftestReqIPC", words(1, 0, 0, 0, 0, 0, 0x26)},
            {"MMUStateIPC", words(1)},
            {"RAUStateIPC", words(1)},
            {"TermStateIPC", words(1)},
            {"RAURestartReqIPC", words(1)},
            {"SetRAUIndexCapabilitiesReqIPC", words(1)},
            {"SetRfPowerReqIPC", words(0, 10, -40, -30)},
            {"SetRfPowerV2ReqIPC", words(0, 10, -40, -30, 1)},
            {"SetRfPowerV3ReqIPC", words(0, 10, -40, -30, 1, 2)},
            {"SetIfLoopStatusReqIPC", words(2)},
            {"SetMLMReqIPC", words(1)},
            {"SetXfRFIfStatusReqIPC", words(m_step, 2, m_step % 2 == 0 ? 2 : 3, m_step)},
        };
        ++m_step; // another frequency, another loop state each time
        const auto found = acting.find(name);
        return found != acting.end() ? found->second : "";
    }

    /// A restart is accepted, but the radio stays where it is: its callbacks would come in between.
    void keepRadioUp()
    {
        for (const char* restart : {"IRadio_1.restart", "IRadio_2.restart"}) {
            if (!platform.state()["results"].contains(restart)) {
                platform.patchState({{"results", {{restart, 0}}}});
            }
        }
    }

    /// Everything that the module wants of a channel before it configures it.
    void configureChannels()
    {
        for (const int index : {0, 1}) {
            platform.radioUp(index + 1);
            module()->setFrameFormat(index, 1, 2, 29, 4);
        }
    }

    /// @return the operations that the module has used so far, with the result that says that they failed; null for those
    ///         that have none
    std::map<std::string, simulated::Json> usedOperations() const
    {
        std::map<std::string, simulated::Json> used;
        for (const auto& call : allCalls()) {
            const std::string interface = call["interface"];
            const auto& result = call["result"];
            if (interface != "ripc" && interface != "InterfaceBroker") {
                const simulated::Json failure = result.is_boolean() ? 0 : 0x8000;
                used.emplace(interface + "." + call["operation"].get<std::string>(),
                             result.is_null() ? simulated::Json() : failure);
            }
        }
        return used;
    }

private:
    std::int64_t m_step = 400;
};

TEST_F(MisuseMatrix, FailingOperations)
{
    for (const std::uint32_t ct : {1U, 2U}) {
        startInService(0x26, {.traceLevel = 5});
        configureChannels();
        deliverCatalogue(ct);
        deliverCatalogue(ct); // with the loop the other way
        auto operations = usedOperations();
        std::erase_if(operations, [](const auto& operation) { return operation.second.is_null(); });
        EXPECT_EQ(operations.size(), 42U) << "all with a result that serve the unit or the channel, some of the other";
        for (const auto& [operation, result] : operations) {
            SCOPED_TRACE(operation + " fails");
            platform.patchState({{"results", {{operation, result}}}});
            deliverCatalogue(ct);
            EXPECT_GE(platform.state()["hits"]["results"][operation], 1) << "or nothing has failed";
            EXPECT_TRUE(answersSelfTest());
            endInjections();
        }
    }
}

TEST_F(MisuseMatrix, SlowOperationsWhileMessagesQueue)
{
    startInService(0x26, {.traceLevel = 5});
    configureChannels();
    deliverCatalogue(1);
    for (const auto& [operation, result] : usedOperations()) {
        platform.patchState({{"delaysMs", {{operation, 2}}}});
    }
    std::vector<std::thread> nodes;
    for (const std::uint32_t ct : {1U, 2U}) {
        std::vector<std::pair<std::string, unsigned>> buffers;
        for (const MessageDefinition& definition : messageCatalogue()) {
            if (definition.direction != MessageDirection::out) {
                buffers.emplace_back(bufferOf(definition, ct), definition.header == MessageHeader::ps ? 1 : 0);
            }
        }
        nodes.emplace_back([this, buffers] {
            for (const auto& [buffer, device] : buffers) {
                EXPECT_TRUE(deliver(buffer, device));
            }
        });
    }
    for (std::thread& node : nodes) {
        node.join();
    }
    EXPECT_TRUE(answersSelfTest());
}

TEST_F(MisuseMatrix, RandomBodies)
{
    startInService(0x26, {.traceLevel = 1});
    configureChannels();
    keepRadioUp();
    std::mt19937 random(20250101); // the same numbers in every run
    const std::int64_t edges[] = {0, 1, 2, 3, 24, 0x7fffffff, 0x80000000, 0xffffffff};
    for (int round = 0; round < 20; ++round) {
        for (const MessageDefinition& definition : messageCatalogue()) {
            const bool isPs = definition.header == MessageHeader::ps;
            std::string buffer = isPs ? "01 02 03 10 05 03 0007 01 02 0040 00 00 00 00 0008 000c" + word(definition.id)
                                      : word(definition.id) + head(edges[random() % std::size(edges)]);
            for (std::size_t i = 24; i < definition.size; i += 4) {
                buffer += word(random() % 2 == 0 ? edges[random() % std::size(edges)]
                                                 : std::int64_t{static_cast<std::uint32_t>(random())});
            }
            ASSERT_TRUE(deliver(buffer, isPs ? 1 : 0));
        }
        ASSERT_TRUE(answersSelfTest());
    }
}

/// What the module registers, and what the protocol has: the same, but for what this radio does not receive.
TEST_F(MisuseMatrix, EveryMessageOfTheNodeHasItsHandler)
{
    startInService(0x26, {.traceLevel = 5});
    configureChannels();
    keepRadioUp();
    std::set<std::string> unhandled;
    for (const MessageDefinition& definition : messageCatalogue()) {
        newTrace();
        deliverAndSettle(bufferOf(definition, 1), definition.header == MessageHeader::ps ? 1 : 0);
        const std::string noHandler = "5 onMessageReceived: *********** No handler found for id " + hexId(definition);
        const bool isHandled = newTrace({noHandler}) != std::vector{noHandler};
        if (definition.direction != MessageDirection::out && !isHandled) {
            unhandled.insert(definition.name);
        }
    }
    EXPECT_EQ(unhandled, (std::set<std::string>{"HccTxIPC", "HopTxIPC"}));
}

TEST_F(MisuseMatrix, NoHandlerTakesAnIdOutsideOfTheProtocol)
{
    startInService(0x26, {.traceLevel = 5});
    configureChannels();
    const std::string longest = zeros(2000);
    for (const std::uint32_t area : {0x10U, 0x20U, 0x30U, 0x40U, 0x50U, 0x60U, 0x70U, 0x80U, 0x100U}) {
        std::vector<std::string> expected;
        newTrace();
        for (std::uint32_t number = 0; number < 0x150; ++number) {
            const std::uint32_t id = area << 16U | number;
            if (findMessage(id, MessageHeader::signal, MessageDirection::in) == nullptr &&
                findMessage(id, MessageHeader::signal, MessageDirection::out) == nullptr) {
                deliver(word(id) + longest);
                expected.push_back("5 onMessageReceived: *********** No handler found for id " +
                                   word(id).substr(word(id).find_first_not_of('0')));
            }
        }
        settle();
        EXPECT_EQ(newTrace(expected), expected);
    }
}

TEST_F(MisuseMatrix, MissingInterfacesAndWrongChannels)
{
    platform.configure(2);
    const auto interfaces = platform.state()["interfaces"];
    EXPECT_GE(interfaces.size(), 20U);
    for (const auto& [interface, present] : interfaces.items()) {
        SCOPED_TRACE("without " + interface);
        startInService(0x26, {.state = R"({"interfaces":{")" + interface + R"(":false}})", .traceLevel = 5});
        configureChannels();
        for (const std::uint32_t ct : {1U, 2U, 0U, 3U, 4294967295U}) {
            deliverCatalogue(ct);
        }
        platform.radioDown(1);
        EXPECT_TRUE(answersSelfTest());
    }
}

TEST_F(MisuseMatrix, NoInterfaceAtAll)
{
    platform.configure(2);
    simulated::Json interfaces = platform.state()["interfaces"];
    for (auto& [interface, present] : interfaces.items()) {
        present = false;
    }
    start({.state = simulated::Json{{"interfaces", interfaces}}.dump(), .traceLevel = 5});
    deliverCatalogue(1);
    deliverCatalogue(2);
    EXPECT_TRUE(answersSelfTest());
}

} // namespace
