#include "RemoteMibHandler.h"
#include "SimulatedPlatform.h"

#include <gtest/gtest.h>

namespace {

using namespace kro::device::vornipc;
using Lines = std::vector<std::string>;

/// No receiver leads to these two; other components may still call them.
TEST(RemoteMibHandler, TracesTheNodesDataThatItIsGiven)
{
    auto& platform = simulated::Platform::instance();
    platform.configure(1);
    platform.setTracePrinting(false);
    platform.setTraceLevel("*", 6);
    VornipcMessageHandler hub{"", nullptr};
    RemoteMibHandler handler(hub);
    HopTxIPC hop;
    HccTxIPC hcc;
    handler.onHopTx(&hop);
    handler.onHccTx(&hcc);
    Lines lines;
    const auto records = platform.traceLines(0);
    for (const auto& line : records["lines"]) {
        const auto text = line["text"].get<std::string>();
        lines.push_back(std::to_string(line["level"].get<int>()) + " " + line["method"].get<std::string>() + ": " +
                        text.substr(0, text.find('{')));
    }
    EXPECT_EQ(lines,
              (Lines{"5 onHopTx: onHopTx() called (id: 0x500102)", "6 onHopTx: Received: ", "6 onHopTx: No response",
                     "5 onHccTx: onHccTx() called (id: 0x500002)", "6 onHccTx: Received: ", "6 onHccTx: No response"}));
    platform.setTraceLevel("*", 3);
}

} // namespace
