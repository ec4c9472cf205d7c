#include "EquipmentDetectionMessages.h"
#include "MessagePrinter.h"
#include "Trace.h"

#include <benchmark/benchmark.h>

#include <sstream>

// What a trace line costs while it is off, next to no line at all; and what the message in it would cost to print.

namespace {

using namespace kro::device::vornipc;

void noTraceLine(benchmark::State& state)
{
    RauDetected1IPC message;
    for (auto _ : state) {
        benchmark::DoNotOptimize(message);
    }
}

void traceLineThatIsOff(benchmark::State& state)
{
    const Trace trace{"BENCH"};
    RauDetected1IPC message;
    for (auto _ : state) {
        benchmark::DoNotOptimize(message);
        trace.at(TraceLevel::Dump) << "Received: " << message;
    }
}

void printRadioDetected(benchmark::State& state)
{
    RauDetected1IPC message;
    for (auto _ : state) {
        std::ostringstream stream;
        stream << message;
        benchmark::DoNotOptimize(stream);
    }
}

} // namespace

BENCHMARK(noTraceLine);
BENCHMARK(traceLineThatIsOff);
BENCHMARK(printRadioDetected);
