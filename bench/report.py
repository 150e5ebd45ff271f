"""Runs the benchmarks, each in a process of its own, and prints ratios with what they are to reach."""

import argparse
import json
import os
import pathlib
import re
import statistics
import subprocess
import sys

OPERATIONS = ["build", "save", "save-again", "load", "save-loaded", "load-file", "free"]
PEERS = ["library", "cereal-unique", "cereal-shared", "boost", "protobuf", "json", "hand-written"]
SIZES = [1000, 10000, 100000, 1000000]

# What, the figure of the library, of the peer, and the ratio to reach; "built" and "loaded" are live heap.
TARGETS = [
    ("save, to cereal with unique pointers", "save", ("cereal-unique", "save"), 1.0),
    ("save again, to the same", "save-again", ("cereal-unique", "save-again"), 1.0),
    ("load, to the same", "load", ("cereal-unique", "load"), 1.0),
    ("save, to cereal with shared pointers", "save", ("cereal-shared", "save"), 0.7),
    ("load, to the same", "load", ("cereal-shared", "load"), 0.7),
    ("build, to plain objects", "build", ("hand-written", "build"), 1.0),
    ("load from a file, to load from memory", "load-file", ("library", "load"), 1.15),
]
HEAP_TARGETS = [
    ("heap of a built circuit, to plain objects", "build", ("hand-written", "build"), 1.0),
    ("heap of a loaded circuit, to plain objects", "load", ("hand-written", "build"), 1.0),
]


class Bench:
    def __init__(self, folder):
        self.program = folder / "bin" / "vrl_bench"
        self.results = folder / "results"
        self.results.mkdir(exist_ok=True)
        self.environment = dict(os.environ, BENCH_FOLDER=str(self.results))

    def command(self, peer, operation, blocks):
        return [str(self.program), f"--benchmark_filter=^{peer}/{operation}/{blocks}/"]

    def run(self, peer, operation, blocks):
        """Microseconds, bytes and live heap per block of one run."""
        done = subprocess.run(self.command(peer, operation, blocks) + ["--benchmark_format=json"],
                              env=self.environment, capture_output=True, text=True, check=True)
        result = json.loads(done.stdout)["benchmarks"][0]
        if result.get("error_occurred"):
            sys.exit(f"bench: {peer}/{operation}/{blocks}: {result['error_message']}")
        return {"time": result["real_time"] / blocks, "bytes": result.get("bytes"), "heap": result["heap"]}

    def instructions(self, peer, operation):
        """Instructions per block: what the second 500 of 1,000 blocks cost, so that what is done once does not count."""
        counts = []
        for blocks in (500, 1000):
            if operation in ("load", "save-loaded", "load-file"):
                self.run(peer, "save", blocks)
            done = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
                                   "--collect-atstart=no", "--toggle-collect=bench_measured"]
                                  + self.command(peer, operation, blocks),
                                  env=self.environment, capture_output=True, text=True, check=True)
            counts.append(int(re.search(r"Collected : (\d+)", done.stderr).group(1)))
        return (counts[1] - counts[0]) // 500


def print_rows(head, rows):
    widths = [max(len(str(row[i])) for row in [head] + rows) for i in range(len(head))]
    for row in [head] + rows:
        cells = [str(cell).ljust(width) if i == 0 else str(cell).rjust(width)
                 for i, (cell, width) in enumerate(zip(row, widths))]
        print("  ".join(cells).rstrip())
    print()


def reached_rows(targets, figure):
    rows = []
    for what, operation, (peer, peer_operation), target in targets:
        ratio = figure("library", operation) / figure(peer, peer_operation)
        rows.append((what, f"{target:.2f}", f"{ratio:.2f}", "yes" if ratio <= target else "no"))
    return rows


def measure_times(bench, sizes, repetitions):
    runs = {}
    total = len(sizes) * repetitions * len(OPERATIONS) * len(PEERS)
    done = 0
    for blocks in sizes:
        for _ in range(repetitions):  # interleaved, so that a slow moment of the machine falls on all
            for operation in OPERATIONS:
                for peer in PEERS:
                    runs.setdefault((blocks, peer, operation), []).append(bench.run(peer, operation, blocks))
                    done += 1
                    if sys.stderr.isatty():
                        print(f"\r{done} of {total} runs", end="", file=sys.stderr)
    if sys.stderr.isatty():
        print(file=sys.stderr)
    return runs


def report_times(bench, sizes, repetitions):
    runs = measure_times(bench, sizes, repetitions)

    def median(blocks, peer, operation, what):
        return statistics.median(run[what] for run in runs[blocks, peer, operation])

    for blocks in sizes:
        print(f"{blocks} blocks, microseconds per block (median of {repetitions}, and the largest difference from it)\n")
        rows = []
        for peer in PEERS:
            row = [peer]
            for operation in OPERATIONS:
                middle = median(blocks, peer, operation, "time")
                spread = max(abs(run["time"] - middle) for run in runs[blocks, peer, operation])
                row.append(f"{middle:.2f} ±{100 * spread / middle:.0f}%")
            row.append(f"{median(blocks, peer, 'save', 'bytes'):.0f}")
            row.append(f"{median(blocks, peer, 'build', 'heap'):.0f}")
            row.append(f"{median(blocks, peer, 'load', 'heap'):.0f}")
            rows.append(row)
        print_rows(["", *OPERATIONS, "bytes", "heap built", "heap loaded"], rows)
        rows = reached_rows(TARGETS, lambda peer, operation: median(blocks, peer, operation, "time"))
        rows += reached_rows(HEAP_TARGETS, lambda peer, operation: median(blocks, peer, operation, "heap"))
        print_rows(["ratio", "to reach", "now", "reached"], rows)
    raw = [{"blocks": key[0], "peer": key[1], "operation": key[2], "runs": value} for key, value in runs.items()]
    return raw


def report_instructions(bench):
    peers = ["library", "cereal-unique", "cereal-shared", "boost", "hand-written"]
    counts = {(peer, operation): bench.instructions(peer, operation) for peer in peers for operation in OPERATIONS}
    print("instructions per block\n")
    print_rows(["", *OPERATIONS], [[peer, *(counts[peer, operation] for operation in OPERATIONS)] for peer in peers])
    rows = reached_rows(TARGETS, lambda peer, operation: counts[peer, operation])
    print_rows(["ratio", "to reach", "now", "reached"], rows)
    return [{"peer": key[0], "operation": key[1], "instructions": value} for key, value in counts.items()]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--instructions", action="store_true")
    parser.add_argument("--sizes", default="1000,10000,100000")
    parser.add_argument("--repetitions", type=int, default=5)
    options = parser.parse_args()
    sizes = [int(size) for size in options.sizes.split(",")]
    if not set(sizes) <= set(SIZES) or options.repetitions < 1:
        sys.exit(f"bench: sizes are of {SIZES}, and repetitions at least 1")
    bench = Bench(options.folder)
    raw = report_instructions(bench) if options.instructions else report_times(bench, sizes, options.repetitions)
    path = bench.results / ("instructions.json" if options.instructions else "times.json")
    path.write_text(json.dumps(raw, indent=1) + "\n")
    print(f"raw figures: {path}")


main()
