#pragma once

#include "benchmarks/containernames.h"

#include <QByteArray>
#include <QString>

#include <benchmark/benchmark.h>
#include <functional>

// What the benchmarks share. ./bench runs each in a process of its own, because the wizard, too,
// loads a tree into fresh memory.

// The folder with the inputs, from the command line.
extern QString inputFolder;

// The names of a directory of state.range(0) containers, in the order of state.range(1), a line
// each.
QByteArray listing(const benchmark::State& state);

// The application object, made at the first call.
void needApplication();

// Makes the application, and the script print the listing from now on.
void answerWithListing(const benchmark::State& state);

// Processor time in seconds that this process, without its children, has used.
double processorTime();

// Runs an action as often as Google Benchmark asks and reports the processor time of each run, for
// which the benchmark has to be set to manual time.
void measure(benchmark::State& state, const std::function<void()>& action);

// Resident memory of this process in bytes, now and at most so far.
double residentMemory();
double peakMemory();

// Sets a benchmark to 10,000, 100,000 and 1,000,000 names, in tree order and shuffled, and to the
// time that measure() reports.
void allSizes(benchmark::internal::Benchmark* benchmark);
