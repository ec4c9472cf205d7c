#include "MessageCatalogue.h"
#include "support/ModuleTest.h"

#include <algorithm>
#include <set>

namespace {

/// Every message that the node may send, against every operation that fails and every interface that is not there.
class MisuseMatrix : public ModuleTest {
protected:
    using Operations = std::set<std::pair<std::string, std::int64_t>>;

    static constexpr std::int64_t failure = 0x8000;

    /// Delivers every message with default contents for a channel and checks that those that are to be answered are.
    void deliverCatalogue(std::uint32_t ct)
    {
        for (const MessageDefinition& definition : messageCatalogue()) {
            if (definition.direction != MessageDirection::out) {
                SCOPED_TRACE(definition.name);
                module()->setOutgoingIpcMessagesAllowed(true); // some of them close it
                newlySent();
                newTrace();
                deliver(bufferOf(definition, ct), definition.header == MessageHeader::ps ? 1 : 0);
                settle();
                checkAnswer(definition, ct);
            }
        }
    }

    void checkAnswer(const MessageDefinition& definition, std::uint32_t ct)
    {
        const auto isServed = [&] {
            const std::string noHandler =
                "5 onMessageReceived: *********** No handler found for id " + hexId(definition);
            return newTrace({noHandler}) != std::vector{noHandler};
        };
        if (const MessageDefinition* answer = findMessage(definition.answer);
            answer != nullptr && answer->header == MessageHeader::signal && ct == 1 && isServed()) {
            const auto sent = newlySent();
            ASSERT_EQ(sent.size(), 1U);
            EXPECT_TRUE(sent[0].starts_with(toNode(word(answer->id)) + head(ct))) << sent[0];
            EXPECT_EQ(sent[0].size(), 2 * (8 + answer->size));
        }
    }

    static std::string hexId(const MessageDefinition& definition)
    {
        const std::string digits = word(definition.id);
        return digits.substr(digits.find_first_not_of('0'));
    }

    static std::string bufferOf(const MessageDefinition& definition, std::uint32_t ct)
    {
        if (definition.header == MessageHeader::ps) {
            return "01 02 03 10 05 06 0007 01 02 0040 00 00 00 00 0008 000c" + word(definition.id) + word(ct) +
                   zeros(definition.size - 28);
        }
        return word(definition.id) + head(ct) + zeros(definition.size - 24);
    }

    /// @return the operations that the catalogue has used so far, with a result that says that they failed
    Operations usedOperations() const
    {
        Operations used;
        for (const auto& call : allCalls()) {
            const std::string interface = call["interface"];
            const auto& result = call["result"];
            if (interface != "ripc" && interface != "InterfaceBroker" && !result.is_null()) {
                used.emplace(interface + "." + call["operation"].get<std::string>(), result.is_boolean() ? 0 : failure);
            }
        }
        return used;
    }
};

TEST_F(MisuseMatrix, FailingOperations)
{
    startInService(0x26, {.traceLevel = 5});
    platform.radioUp(1);
    platform.radioUp(2);
    deliverCatalogue(1);
    const Operations operations = usedOperations();
    EXPECT_GE(operations.size(), 12U);
    for (const auto& [operation, result] : operations) {
        SCOPED_TRACE(operation + " fails");
        platform.patchState({{"results", {{operation, result}}}});
        deliverCatalogue(1);
        EXPECT_TRUE(answersSelfTest());
        endInjections();
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
        platform.radioUp(1);
        platform.radioUp(2);
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
    EXPECT_TRUE(answersSelfTest());
}

} // namespace
