#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "support/Http.h"
#include "support/RunningUnit.h"

namespace {

struct Misuse {
    std::string what;
    std::string request; ///< HOST stands for the unit's own address
    int status;
    std::string error; ///< must occur in the error text
};

std::string withHost(std::string text, const std::string& host)
{
    for (auto at = text.find("HOST"); at != std::string::npos; at = text.find("HOST", at)) {
        text.replace(at, 4, host);
    }
    return text;
}

std::string sent(const std::string& method, const std::string& path, const std::string& body,
                 const std::string& headers = "")
{
    return httpRequest("HOST", method, path, body, headers);
}

std::string nested(std::size_t levels)
{
    return std::string(levels, '[') + std::string(levels, ']');
}

TEST(RadioUnitControl, RefusesMisuseWithAClearError)
{
    std::string big;
    big.resize(10'000'000, ' ');
    const std::string chunk = "100000\r\n" + std::string(0x100000, ' ') + "\r\n";
    const Misuse cases[] = {
        {"unknown path", sent("GET", "/api/nothing", ""), 404, "/api/state"},
        {"path of a file", sent("GET", "/etc/passwd", ""), 404, "/etc/passwd"},
        {"path outside", sent("GET", "/api/../../etc/passwd", ""), 404, "no such path"},
        {"not text in the path", sent("GET", "/api/%ff%00", ""), 404, "no such path"},
        {"very long path", sent("GET", "/" + std::string(7000, 'a'), ""), 404, "no such path"},
        {"path beyond the limit", sent("GET", "/" + std::string(9000, 'a'), ""), 414, "too long"},
        {"wrong method", sent("POST", "/api/module", "{}"), 405, "GET"},
        {"another wrong method", sent("DELETE", "/api/state", ""), 405, "GET or PATCH"},
        {"method that HTTP does not have", "STEAL /api/state HTTP/1.1\r\nHost: HOST\r\n\r\n", 400, "HTTP"},
        {"no HTTP at all", "\x16\x03\x01 hello\r\n\r\n", 400, "HTTP"},
        {"10 MB", sent("PATCH", "/api/state", big), 413, "1048576"},
        {"one byte too many", sent("PATCH", "/api/state", std::string((1 << 20) + 1, ' ')), 413, "1048576"},
        {"as many as allowed", sent("PATCH", "/api/state", std::string(1 << 20, ' ')), 400, "JSON"},
        {"too much in chunks",
         "PATCH /api/state HTTP/1.1\r\nHost: HOST\r\nTransfer-Encoding: chunked\r\n\r\n" + chunk + chunk + "0\r\n\r\n",
         413, "1048576"},
        {"length that is none", "PATCH /api/state HTTP/1.1\r\nHost: HOST\r\nContent-Length: -1\r\n\r\n", 400, "-1"},
        {"length beyond all", "PATCH /api/state HTTP/1.1\r\nHost: HOST\r\nContent-Length: 99999999999999999999\r\n\r\n",
         413, "1048576"},
        {"form", sent("PATCH", "/api/state", "x", "Content-Type: multipart/form-data; boundary=b\r\n"), 400, "JSON"},
        {"foreign host", "GET /api/module HTTP/1.1\r\nHost: radio.example\r\n\r\n", 421, "radio.example"},
        {"host of another machine", "GET /api/module HTTP/1.1\r\nHost: 192.0.2.7:80\r\n\r\n", 421, "192.0.2.7"},
        {"two hosts", "GET /api/module HTTP/1.1\r\nHost: HOST\r\nHost: radio.example\r\n\r\n", 421, "radio.example"},
        {"foreign origin", sent("GET", "/api/module", "", "Origin: http://radio.example\r\n"), 421, "radio.example"},
        {"origin null", sent("POST", "/api/shutdown", "", "Origin: null\r\n"), 421, "null"},
        {"another port of this machine", sent("POST", "/api/shutdown", "", "Origin: http://127.0.0.1:1\r\n"), 421,
         ":1"},
        {"own origin in TLS", sent("GET", "/api/module", "", "Origin: https://HOST\r\n"), 421, "https"},
        {"broken JSON", sent("PATCH", "/api/state", "{\"unit\":"), 400, "not JSON"},
        {"no body", sent("PATCH", "/api/state", ""), 400, "not JSON"},
        {"no object", sent("PATCH", "/api/state", "[1]"), 400, "object"},
        {"not UTF-8", sent("PATCH", "/api/state", "{\"\xff\xfe\":1}"), 400, "not JSON"},
        {"number beyond all", sent("PATCH", "/api/state", R"({"unit":1e999})"), 400, "not JSON"},
        {"deep nesting", sent("PATCH", "/api/state", nested(400'000)), 400, "deep"},
        {"unknown key", sent("PATCH", "/api/state", R"({"unit":{"color":1}})"), 400, "unit.color"},
        {"wrong type", sent("PATCH", "/api/state", R"({"unit":{"productId":"3"}})"), 400, "unit.productId"},
        {"unknown parameter", sent("GET", "/api/state?since=1", ""), 400, "since"},
        {"wrong since", sent("GET", "/api/calls?since=-1", ""), 400, "since=-1"},
        {"since beyond all", sent("GET", "/api/trace?since=99999999999999999999", ""), 400, "since"},
        {"unknown event", sent("POST", "/api/events", R"({"event":"radioUpp","ct":1})"), 400, "radioUp,"},
        {"event without a name", sent("POST", "/api/events", R"({"ct":1})"), 400, "event"},
        {"event's argument missing", sent("POST", "/api/events", R"({"event":"radioUp"})"), 400, "ct: missing"},
        {"event's argument unknown", sent("POST", "/api/events", R"({"event":"radioUp","ct":1,"x":2})"), 400, "x:"},
        {"event's argument of a wrong type", sent("POST", "/api/events", R"({"event":"radioUp","ct":1.0})"), 400,
         "1.0"},
        {"event's argument too large", sent("POST", "/api/events", R"({"event":"radioUp","ct":2147483648})"), 400,
         "2147483648"},
        {"signal below its range", sent("POST", "/api/events", R"({"event":"fault","signal":-1,"ct":1,"active":true})"),
         400, "signal"},
        {"flag as a number", sent("POST", "/api/events", R"({"event":"fault","signal":1,"ct":1,"active":1})"), 400,
         "active"},
        {"half a byte", sent("POST", "/api/events", R"({"event":"bpmCommand","data":"abc"})"), 400, "data"},
        {"no hexadecimal digit", sent("POST", "/api/events", R"({"event":"bpmCommand","data":"0x"})"), 400, "data"},
        {"nobody registered", sent("POST", "/api/events", R"({"event":"radioUp","ct":3})"), 409, "radioUp"},
        {"level beyond the range", sent("PUT", "/api/trace/level", R"({"tag":"*","level":7})"), 400, "level"},
        {"unknown tag", sent("PUT", "/api/trace/level", R"({"tag":"no such","level":6})"), 400, "KRO.VORNIPC.EH"},
        {"level with an unknown key", sent("PUT", "/api/trace/level", R"({"tag":"*","level":6,"x":1})"), 400, "level"},
    };
    const RunningUnit unit;
    const auto before = unit.get("/api/state");
    for (const auto& misuse : cases) {
        const auto answer = httpExchange(unit.control(), withHost(misuse.request, unit.control()));
        EXPECT_EQ(answer.status, misuse.status) << misuse.what << ": " << answer.body.substr(0, 500);
        const auto body = nlohmann::json::parse(answer.body, nullptr, false);
        ASSERT_TRUE(body.is_object() && body.size() == 1 && body.contains("error"))
            << misuse.what << ": " << answer.body;
        EXPECT_NE(body["error"].get<std::string>().find(misuse.error), std::string::npos)
            << misuse.what << ": " << body["error"];
    }
    EXPECT_EQ(unit.get("/api/state"), before);
}

TEST(RadioUnitControl, AnswersThisMachineByAllItsNames)
{
    const RunningUnit unit;
    const std::string port = unit.control().substr(unit.control().find(':'));
    const std::vector<std::string> heads{"Host: localhost" + port, "Host: 127.0.0.1", "Host: [::1]" + port,
                                         "Host: LOCALHOST" + port + "\r\nOrigin: http://localhost" + port,
                                         "Host: 127.0.0.1" + port + "\r\nOrigin: http://" + unit.control()};
    for (const auto& head : heads) {
        const auto answer = httpExchange(unit.control(), "GET /api/module HTTP/1.1\r\n" + head + "\r\n\r\n");
        EXPECT_EQ(answer.status, 200) << head << ": " << answer.body;
    }
}

TEST(RadioUnitControl, TellsTheModulesFacts)
{
    const RunningUnit unit{{"--channels", "1", "--module-channels", "255"}};
    EXPECT_EQ(unit.get("/api/module"), nlohmann::json::parse(R"({
        "moduleId": 113000, "name": "VornipcAdapter", "channels": 255, "moduleInit": 0,
        "outgoingIpcMessagesAllowed": false, "vornipcWhiteListActive": false, "slotNumber": 0, "senderId": 0, "nodes": 0,
        "reader": {"state": "running"}})"));
    EXPECT_EQ(unit.request("POST", "/api/events", R"({"event":"setOutgoingIpcMessagesAllowed","on":true})").body,
              nlohmann::json::parse(R"({"result":null})"));
    EXPECT_EQ(unit.get("/api/module")["outgoingIpcMessagesAllowed"], true);
}

TEST(RadioUnitControl, AnswersWhileManyClientsHoldOn)
{
    RunningUnit unit;
    ASSERT_EQ(unit.request("PATCH", "/api/state", R"({"delaysMs":{"IRadio_1.getInventory":60000}})").status, 200);
    constexpr std::size_t many = 40; // more than the interface has threads of its own
    std::vector<std::unique_ptr<Socket>> eventClients;
    std::vector<std::unique_ptr<Socket>> stalledClients;
    for (std::size_t i = 0; i < many; ++i) {
        eventClients.push_back(std::make_unique<Socket>(unit.control()));
        eventClients.back()->send(httpRequest(unit.control(), "POST", "/api/events", R"({"event":"radioUp","ct":1})"));
        stalledClients.push_back(std::make_unique<Socket>(unit.control()));
        stalledClients.back()->send("G"); // and no more
    }
    ASSERT_TRUE(unit.waitFor("/api/calls", [](const auto& calls) {
        const auto& last = calls.at("calls").back();
        return last.at("operation") == "getInventory" && !last.contains("result");
    })) << "an event is under way";
    EXPECT_EQ(unit.request("GET", "/api/module").status, 200);

    EXPECT_EQ(unit.stop(), 0) << unit.program().errors();
    for (const auto& client : eventClients) {
        EXPECT_EQ(client->receive(9), "HTTP/1.1 ") << "who waits for an event is answered before the unit ends";
    }
}

TEST(RadioUnitControl, StopsOnRequestAfterAnswering)
{
    RunningUnit unit;
    const Socket idle{unit.control()};
    const auto answer = unit.request("POST", "/api/shutdown");
    EXPECT_EQ(answer.status, 200);
    EXPECT_TRUE(answer.body.is_object());
    EXPECT_EQ(unit.program().waitForExit(), 0) << unit.program().errors();
}

} // namespace
