#!/usr/bin/env python3
"""Runs the benchmarks in pairs, each run in a process of its own but for those on the practice Mac, and
prints one table.

compare.py BUILDFOLDER INPUTFOLDER JSONFILE
"""
import json
import re
import statistics
import subprocess
import sys
import tempfile

ROUNDS = 5
SIZES = [10000, 100000]
ORDERS = ["tree", "shuffled"]


class Row:
    """Two benchmarks, or two sizes of one, whose medians are compared. The limit is for their
    ratio, their difference, or for ours alone."""

    def __init__(self, what, size, ours, peer, limit, metric="real_time", difference=False, alone=False):
        self.what, self.size, self.ours, self.peer = what, size, ours, peer
        self.limit, self.metric, self.difference, self.alone = limit, metric, difference, alone
        self.values = {"ours": [], "peer": []}

    def median(self, side):
        return statistics.median(self.values[side])

    def result(self):
        if self.difference:
            return self.median("ours") - self.median("peer")
        if self.alone:
            return self.median("ours")
        return self.median("ours") / self.median("peer")

    def spread(self):
        """Half the distance between the quartiles, in parts of the median, of the unsteadier side."""

        def of(side):
            low, _, high = statistics.quantiles(self.values[side], n=4)
            return (high - low) / 2 / self.median(side)

        return max(of("ours"), of("peer"))


def rows():
    once = "/iterations:1"
    for number, order in enumerate(ORDERS):
        for size in SIZES:
            suffix = f"/{size}/{number}"
            yield Row("script output to model", f"{size:,} {order}", "outputToModel" + suffix,
                      "outputParsedByOpenLdapAndReadyTextsToModel" + suffix, 1.3)
    # Both sizes once in a process, in memory that is as fresh as the wizard's.
    for number, order in enumerate(ORDERS):
        yield Row("the same, each name at 1 M and at 10 k", order,
                  f"outputToModelOnce/1000000/{number}{once}",
                  f"outputToModelOnce/10000/{number}{once}", 3, metric="each")
    for number, order in enumerate(ORDERS):
        yield Row("memory after loading", f"100,000 {order}",
                  f"outputToModelOnce/100000/{number}{once}", f"readyTextsToModel/100000/{number}",
                  2, metric="bytes")
    for number, order in enumerate(ORDERS):
        for size in SIZES:
            yield Row("container tree to item model", f"{size:,} {order}",
                      f"treeToModel/{size}/{number}", f"readyTextsToModel/{size}/0", 1.2)
    yield Row("browser shown, 50 k level opened, scrolled", "100,000", "browserShown" + once,
              "floorModelShown" + once, 1.3)
    yield Row("tree released for another, against built", "100,000", "treeReleased/100000/0" + once,
              "treeBuilt/100000/0" + once, 0.5)
    for metric, name in (("real_time", ""), ("bytes", ", memory")):
        yield Row("runCmd" + name, "64 MiB", "runCmdOfText" + once,
                  "textReadPlainlyAndConverted" + once, 1.3, metric)
        yield Row("getReturnValue" + name, "64 MiB", "returnValueOfText" + once,
                  "textReadPlainly" + once, 1.3, metric)
    yield Row("longest pause during a join, more than idle", "60 KiB", "pauseDuringJoin" + once,
              "pauseWhenIdle" + once, 16.7e6, difference=True)


def run(program, folder, name):
    """One run of a benchmark; small ones are repeated for 20 ms."""
    answer = subprocess.run(
        [program, folder, "--benchmark_filter=^" + name + "(/manual_time|/real_time)$",
         "--benchmark_min_time=0.02", "--benchmark_format=json"],
        check=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    result = json.loads(answer.stdout)["benchmarks"][0]
    if "/1" in name:  # all numbers of names begin so
        result["each"] = result["real_time"] / int(name.split("/")[1])
    return result


def instructions(program, folder, name):
    """What a benchmark takes by callgrind, the same in each run."""
    with tempfile.NamedTemporaryFile(mode="r") as counts:
        subprocess.run(
            ["valgrind", "--tool=callgrind", "--collect-atstart=no", "--quiet",
             "--callgrind-out-file=" + counts.name, program, folder,
             "--benchmark_filter=^" + name + "/"],
            check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return int(re.search(r"^(?:summary|totals): (\d+)", counts.read(), re.M).group(1))


def measure_start(program, folder):
    row = Row("start to first paint", "", "programStarts", "bareWizardStarts", 1.5,
              metric="instructions")
    for side in ("ours", "peer"):
        row.values[side] = [instructions(program, folder, getattr(row, side))] * 2  # as the spread needs two
    return row


def measure(program, folder, all_rows):
    """All rows in each round, so that a busy machine slows both sides alike. A benchmark that
    several rows need runs once in a round."""
    for round_number in range(ROUNDS):
        done = {}
        for row in all_rows:
            for side in ("ours", "peer"):
                name = getattr(row, side)
                if name not in done:
                    done[name] = run(program, folder, name)
                row.values[side].append(done[name][row.metric])
        print(f"round {round_number + 1} of {ROUNDS}", file=sys.stderr)


def on_practice_mac(build, command, *options):
    return subprocess.run(["practice/mac", *options, build, command], stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)


def run_on_practice_mac(build, program, *options):
    """What a program prints on the practice Mac."""
    answer = on_practice_mac(build, f"{build}/benchmarks/{program}", *options)
    if answer.returncode != 0:
        sys.exit(f"{program} fails on the practice Mac:\n{answer.stdout}{answer.stderr}")
    return json.loads(answer.stdout[answer.stdout.index("{"):])


def measure_joins(build):
    """The join through the wizard and from a shell, alternately."""
    row = Row("the whole join on the practice Mac", "", "joins", "mvjoin", 1.05)
    row.values = run_on_practice_mac(build, "joins")
    return [row]


def measure_directory(build):
    """Checks and a tree of the practice Mac's domain, through the wizard and from a shell."""
    values = run_on_practice_mac(build, "directory", "--scenario", "many")
    all_rows = [Row("check behind dead controllers", str(dead), f"check behind {dead}", "kinit, ldapsearch",
                    3e9, alone=True) for dead in (0, 1, 16)]
    all_rows.append(Row("real containers, against ldapsearch", "10,000", "containers", "ldapsearch", 1.15))
    all_rows.append(Row("the assistant's processor time of it", "10,000", "own time", "containers", 0.03))
    for row in all_rows:
        row.values = values[row.ours]
    return all_rows


def shown(value, metric):
    if metric == "bytes":
        return f"{value / 2**20:.1f} MiB"
    if metric == "each":
        return f"{value:.0f} ns"
    if metric == "instructions":
        return f"{value / 1e6:.1f} M"
    return f"{value / 1e6:.2f} ms"


def table(all_rows):
    form = "{:<44} {:>18} {:>12} {:>12} {:>8} {:>8} {:>7}  {}"
    lines = [form.format("what", "size", "ours", "peer", "ratio", "at most", "spread", "")]
    for row in all_rows:
        reached = "" if row.result() <= row.limit else "missed"
        result, limit = f"{row.result():.2f}", f"{row.limit:.4g}"
        if row.difference or row.alone:
            result, limit = f"{row.result() / 1e6:.1f} ms", f"{row.limit / 1e6:.1f} ms"
        lines.append(form.format(row.what, row.size, shown(row.median("ours"), row.metric),
                                 shown(row.median("peer"), row.metric), result, limit,
                                 f"{row.spread():.0%}", reached).rstrip())
    return "\n".join(lines)


def main():
    build, folder, json_file = sys.argv[1:]
    program = build + "/benchmarks/benchmarks"
    all_rows = list(rows())
    measure(program, folder, all_rows)
    all_rows.append(measure_start(program, folder))
    trial = on_practice_mac(build, "true")
    if trial.returncode == 0:
        all_rows += measure_joins(build) + measure_directory(build)
    print(table(all_rows))
    if trial.returncode != 0:
        reason = trial.stderr.strip().rpartition("\n")[2]
        print(f"joins, checks and real containers             not measured, no practice Mac here: {reason}")
    print("\nwhat a probe costs, its process included")
    for probe in ("joinedProbe", "enrolledProbe", "hostNameProbe"):
        cost = run(program, folder, probe + "/iterations:50")["real_time"]
        print(f"{probe:<44} {cost / 1e6:>18.2f} ms")
    with open(json_file, "w", encoding="utf-8") as out:
        json.dump([{"what": row.what, "size": row.size, "metric": row.metric,
                    "ours": row.median("ours"), "peer": row.median("peer"),
                    "result": row.result(), "limit": row.limit, "spread": row.spread(),
                    "values": row.values} for row in all_rows], out, indent=1)


main()
