#include "benchmarks/benchmarks.h"

#include "system/commandrunner.h"

#include <cstdio>
#include <memory>
#include <string>

namespace {

std::string command()
{
    return "cat '" + inputFolder.toStdString() + "/text'";
}

void takeMemory(benchmark::State& state, double before)
{
    state.counters["bytes"] = peakMemory() - before;
}

std::string readPlainly()
{
    std::string output;
    FILE* stream = popen(command().c_str(), "r");
    const auto block = std::make_unique<char[]>(BUFSIZ * 8);
    while (const size_t count = fread(block.get(), 1, BUFSIZ * 8, stream))
        output.append(block.get(), count);
    pclose(stream);
    return output;
}

void runCmdOfText(benchmark::State& state)
{
    const double before = residentMemory();
    QString output;
    measure(state, [&] { runCmd(command().c_str(), &output); });
    takeMemory(state, before);
}

void textReadPlainlyAndConverted(benchmark::State& state)
{
    const double before = residentMemory();
    QString output;
    measure(state, [&] { output = QString::fromStdString(readPlainly()); });
    takeMemory(state, before);
}

void returnValueOfText(benchmark::State& state)
{
    const double before = residentMemory();
    std::string output;
    measure(state, [&] { output = getReturnValue(command().c_str()); });
    takeMemory(state, before);
}

void textReadPlainly(benchmark::State& state)
{
    const double before = residentMemory();
    std::string output;
    measure(state, [&] { output = readPlainly(); });
    takeMemory(state, before);
}

BENCHMARK(runCmdOfText)->Iterations(1)->UseManualTime();
BENCHMARK(textReadPlainlyAndConverted)->Iterations(1)->UseManualTime();
BENCHMARK(returnValueOfText)->Iterations(1)->UseManualTime();
BENCHMARK(textReadPlainly)->Iterations(1)->UseManualTime();

} // namespace
