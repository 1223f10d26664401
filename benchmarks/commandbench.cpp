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

void measureMemory(benchmark::State& state, const std::function<void()>& action)
{
    const double before = residentMemory();
    measure(state, action);
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
    QString output;
    measureMemory(state, [&] { runCmd(command().c_str(), &output); });
}

void textReadPlainlyAndConverted(benchmark::State& state)
{
    QString output;
    measureMemory(state, [&] { output = QString::fromStdString(readPlainly()); });
}

void returnValueOfText(benchmark::State& state)
{
    std::string output;
    measureMemory(state, [&] { output = getReturnValue(command().c_str()); });
}

void textReadPlainly(benchmark::State& state)
{
    std::string output;
    measureMemory(state, [&] { output = readPlainly(); });
}

BENCHMARK(runCmdOfText)->Iterations(1)->UseManualTime();
BENCHMARK(textReadPlainlyAndConverted)->Iterations(1)->UseManualTime();
BENCHMARK(returnValueOfText)->Iterations(1)->UseManualTime();
BENCHMARK(textReadPlainly)->Iterations(1)->UseManualTime();

} // namespace
