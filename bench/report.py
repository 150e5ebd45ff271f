"""Prints the benchmarks as tables, and ratios with what they are to reach."""

import argparse
import json
import pathlib
import sys

import plots
from runs import Bench, Figures, Progress, TOOL_COMMANDS

OPERATIONS = ["build", "save", "save-over", "save-again", "save-file", "load", "save-loaded", "load-file", "free",
              "copy-bytes"]
PEERS = ["library", "cereal-unique", "cereal-shared", "boost", "protobuf", "json", "hand-written"]
COUNTED_PEERS = ["library", "cereal-unique", "cereal-shared", "boost", "hand-written"]
COUNTED_OPERATIONS = ["build", "save", "save-again", "load", "save-loaded", "load-file", "free"]
SIZES = [1000, 10000, 100000, 1000000]
FILES = [1, 10, 100]

# What, the figure of the library, of what it is compared with, and the ratio to reach.
TARGETS = [
    ("save into a used buffer, to cereal with unique pointers", "library/save-over", "cereal-unique/save-over", 1.0),
    ("save into a growing string, to the same", "library/save", "cereal-unique/save", 1.0),
    ("save to a file, to the same", "library/save-file", "cereal-unique/save-file", 1.0),
    ("load, to the same", "library/load", "cereal-unique/load", 1.0),
    ("save into a used buffer, to cereal with shared pointers", "library/save-over", "cereal-shared/save-over", 0.7),
    ("save into a growing string, to the same", "library/save", "cereal-shared/save", 0.7),
    ("load, to the same", "library/load", "cereal-shared/load", 0.7),
    ("build, to plain objects", "library/build", "hand-written/build", 1.0),
    ("load from a file, to load from memory", "library/load-file", "library/load", 1.15),
    ("node to element and port, to the other way", "library/find-port", "library/find-node", 2.0),
    ("element number to name, to name to element", "library/find-name", "library/find-block", 2.0),
    ("parameter by name, of one block, to a plain map", "library/read-one-parameter", "hand-written/read-one-parameter", 1.2),
    ("parameter by name, of random blocks, to the same", "library/read-parameter", "hand-written/read-parameter", 1.2),
]
HEAP_TARGETS = [
    ("heap of a built circuit, to plain objects", "library/build", "hand-written/build", 1.0),
    ("heap of a loaded circuit, to plain objects", "library/load", "hand-written/build", 1.0),
]
COUNTED_TARGETS = [
    ("save, to cereal with unique pointers", "library/save", "cereal-unique/save", 1.0),
    ("save again, to the same", "library/save-again", "cereal-unique/save-again", 1.0),
    ("load, to the same", "library/load", "cereal-unique/load", 1.0),
    ("save, to cereal with shared pointers", "library/save", "cereal-shared/save", 0.7),
    ("load, to the same", "library/load", "cereal-shared/load", 0.7),
    ("build, to plain objects", "library/build", "hand-written/build", 1.0),
    ("load from a file, to load from memory", "library/load-file", "library/load", 1.15),
    ("parameter by name, of one block, to a plain map", "library/read-one-parameter", "hand-written/read-one-parameter", 1.2),
]
GROWN = ["build", "save", "save-over", "save-file", "load", "load-file", "free"]
GROWTH = 1.2  # beside that of plain objects
TOOL_TARGETS = {"show": 4.0, "show --native": 2.0, "check": 2.0, "export": 2.0, "import": 2.0, "diff": 4.0,
                "set, of one element": 4.0, "set, of all": 8.0}
RATIO_HEAD = ["ratio", "to reach", "now", "reached"]


def keep(bench, name, raw):
    path = bench.results / name
    path.write_text(json.dumps(raw, indent=1) + "\n")
    print(f"raw figures: {path}\n")


def print_rows(head, rows):
    widths = [max(len(str(row[i])) for row in [head] + rows) for i in range(len(head))]
    for row in [head] + rows:
        cells = [str(cell).ljust(width) if i == 0 else str(cell).rjust(width)
                 for i, (cell, width) in enumerate(zip(row, widths))]
        print("  ".join(cells).rstrip())
    print()


def ratio_row(what, target, ratio):
    return (what, f"{target:.2f}", f"{ratio:.2f}", "yes" if round(ratio, 2) <= target else "no")


def ratio_rows(targets, figure):
    return [ratio_row(what, target, figure(ours) / figure(other)) for what, ours, other, target in targets]


def runs_of(count, repetitions):
    return repetitions if count < SIZES[-1] else max(1, repetitions // 3)  # the largest ones take minutes each


def measure(bench, sizes, repetitions):
    names = [f"{peer}/{operation}" for operation in OPERATIONS for peer in PEERS]
    names += [name for name in bench.names() if name.split("/")[1] not in [*OPERATIONS, "start-up"]]
    figures = Figures()
    progress = Progress(sum(runs_of(count, repetitions) for count in sizes) * len(names) + repetitions * len(FILES))
    for count in sizes:
        bench.prepare(names, count)
        for _ in range(runs_of(count, repetitions)):  # interleaved, so that a slow moment of the machine falls on all
            for name in names:
                figures.add(name, count, bench.run(name, count))
                progress.step()
    for _ in range(repetitions):
        for count in FILES:
            figures.add("library/start-up", count, bench.run("library/start-up", count))
            progress.step()
    return figures


def print_peers(figures, count):
    rows = []
    for peer in PEERS:
        row = [peer]
        for operation in OPERATIONS:
            name = f"{peer}/{operation}"
            spread = f" ±{100 * figures.spread(name, count):.0f}%" if figures.runs_of(name, count) > 1 else ""
            row.append(f"{figures.median(name, count):.2f}{spread}")
        row.append(f"{figures.median(f'{peer}/save', count, 'bytes'):.0f}")
        row += [f"{figures.median(f'{peer}/{operation}', count, 'heap'):.0f}" for operation in ("build", "load")]
        rows.append(row)
    print_rows(["", *OPERATIONS, "bytes", "heap built", "heap loaded"], rows)


def print_queries(figures, sizes):
    names = sorted({name for name, _ in figures.runs if name.split("/")[1] not in [*OPERATIONS, "start-up"]},
                   key=lambda name: name.split("/")[1])
    print("what a host asks, microseconds of each\n")
    print_rows(["", *sizes], [[name, *(f"{figures.median(name, count):.3f}" for count in sizes)] for name in names])


def print_growth(figures, first, last):
    rows = []
    for operation in GROWN:
        ours, plain = (figures.median(f"{peer}/{operation}", last) / figures.median(f"{peer}/{operation}", first)
                       for peer in ("library", "hand-written"))
        rows.append((operation, f"{ours:.2f}", f"{plain:.2f}", *ratio_row("", GROWTH, ours / plain)[1:]))
    print(f"growth of the time per block from {first} to {last} blocks\n")
    print_rows(["", "library", "plain objects", *RATIO_HEAD[1:]], rows)


def print_start(figures):
    first, last = FILES[-2:]
    ratio = figures.median("library/start-up", last) / figures.median("library/start-up", first)
    print("start-up, microseconds per plug-in file\n")
    print_rows(["", *FILES], [["", *(f"{figures.median('library/start-up', count):.0f}" for count in FILES)]])
    print_rows(RATIO_HEAD, [ratio_row(f"start-up per file, {last} files to {first}", 1.3, ratio)])


def print_tool(figures, tool, count):
    seconds = figures.median("library/load-file", count) * count / 1e6
    megabytes = figures.median("library/load", count, "heap") * count / 2**20
    print(f"the tool on {count} blocks, to the library's own load of them ({seconds:.2f} s, {megabytes:.0f} MB)\n")
    rows = []
    for command in TOOL_COMMANDS:
        used, target = tool[command], TOOL_TARGETS[command]
        time, memory = (ratio_row("", target, ratio)
                        for ratio in (used["seconds"] / seconds, used["megabytes"] / megabytes))
        rows.append((f"vrl {command}", f"{used['seconds']:.2f}", f"{used['megabytes']:.0f}", time[1], time[2], memory[2],
                     "yes" if time[3] == memory[3] == "yes" else "no"))
    print_rows(["", "s", "MB", "to reach", "time", "memory", "reached"], rows)


def report_times(bench, sizes, repetitions):
    figures = measure(bench, sizes, repetitions)
    tool_count = max([count for count in sizes if count <= 100000], default=None)
    tool = bench.tool(tool_count, repetitions) if tool_count else {}
    raw = {"runs": figures.raw(), "tool": {"blocks": tool_count, **tool}}
    keep(bench, "times.json", raw)
    for count in sizes:
        print(f"{count} blocks, microseconds per block (median of {runs_of(count, repetitions)}, and the largest "
              "difference from it)\n")
        print_peers(figures, count)
        rows = ratio_rows(TARGETS, lambda name: figures.median(name, count))
        rows += ratio_rows(HEAP_TARGETS, lambda name: figures.median(name, count, "heap"))
        print_rows(RATIO_HEAD, rows)
    print_queries(figures, sizes)
    if len(sizes) > 1:
        print_growth(figures, next((size for size in sizes[:-1] if size >= 10000), sizes[0]), sizes[-1])
    print_start(figures)
    if tool:
        print_tool(figures, tool, tool_count)


def report_instructions(bench):
    names = [f"{peer}/{operation}" for peer in COUNTED_PEERS for operation in COUNTED_OPERATIONS]
    names += [name for _, ours, other, _ in COUNTED_TARGETS for name in (ours, other)]
    names = list(dict.fromkeys(names))
    progress = Progress(len(names))
    counts = {}
    for name in names:
        counts[name] = bench.instructions(name)
        progress.step()
    print("instructions per block\n")
    print_rows(["", *COUNTED_OPERATIONS], [[peer, *(counts[f"{peer}/{operation}"] for operation in COUNTED_OPERATIONS)]
                                           for peer in COUNTED_PEERS])
    print_rows(RATIO_HEAD, ratio_rows(COUNTED_TARGETS, counts.get))
    keep(bench, "instructions.json", counts)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--instructions", action="store_true")
    parser.add_argument("--sizes", default="1000,10000,100000")
    parser.add_argument("--repetitions", type=int, default=5)
    parser.add_argument("--plots", type=pathlib.Path)
    options = parser.parse_args()
    bench = Bench(options.folder)
    if options.plots:
        plots.draw(Figures.of(json.loads((bench.results / "times.json").read_text())["runs"]), options.plots)
        return
    sizes = sorted({int(size) for size in options.sizes.split(",")})
    if not set(sizes) <= set(SIZES) or options.repetitions < 1:
        sys.exit(f"bench: sizes are of {SIZES}, and repetitions at least 1")
    if options.instructions:
        report_instructions(bench)
    else:
        report_times(bench, sizes, options.repetitions)


main()
