"""Draws the figures of the benchmarks as SVG."""

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams["svg.hashsalt"] = "vrllib"  # equal figures make equal files
matplotlib.rcParams["svg.fonttype"] = "none"

import matplotlib.pyplot as pyplot  # noqa: E402
import matplotlib.ticker as ticker  # noqa: E402

PEERS = {"library": "this library", "cereal-unique": "cereal, unique pointers", "cereal-shared": "cereal, shared pointers",
         "boost": "Boost.Serialization", "protobuf": "protobuf", "json": "nlohmann-json", "hand-written": "by hand"}
OPERATIONS = {"build": "build", "save-over": "save into a used buffer", "save": "save into a growing string",
              "save-file": "save to a file", "load": "load", "load-file": "load from a file", "free": "free"}
QUESTIONS = {"find-node": "element and port to node", "find-port": "node to element and port",
             "find-block": "name to element", "find-name": "number to name", "read-parameter": "parameter by name"}


def save(figure, path):
    figure.tight_layout()
    figure.savefig(path, metadata={"Date": None})
    pyplot.close(figure)


def sizes_of(figures):
    return sorted({count for name, count in figures.runs if name == "library/build"})


def scale(axes):
    """Both ways in powers, with times in plain numbers."""
    axes.set_xscale("log")
    axes.set_yscale("log")
    axes.yaxis.set_major_locator(ticker.LogLocator(subs=(1, 2, 5)))
    axes.yaxis.set_major_formatter(ticker.FuncFormatter(lambda value, place: f"{value:g}"))
    axes.yaxis.set_minor_formatter(ticker.NullFormatter())
    axes.grid(True, alpha=0.3)


def draw_times(figures, path):
    sizes = sizes_of(figures)
    figure, all_axes = pyplot.subplots(2, 4, figsize=(13, 6.5), sharex=True)
    for axes, (operation, title) in zip(all_axes.flat, OPERATIONS.items()):
        for peer, label in PEERS.items():
            times = [figures.median(f"{peer}/{operation}", size) for size in sizes]
            axes.plot(sizes, times, marker=".", label=label, linewidth=2.5 if peer == "library" else 1)
        scale(axes)
        axes.set_title(title)
    for axes in all_axes[:, 0]:
        axes.set_ylabel("µs per block")
    all_axes[0, -1].tick_params(labelbottom=True)
    for axes in [*all_axes[-1, :-1], all_axes[0, -1]]:
        axes.set_xlabel("blocks")
    all_axes[-1, -1].axis("off")
    all_axes[-1, -1].legend(*all_axes[0, 0].get_legend_handles_labels(), loc="center")
    save(figure, path)


def draw_questions(figures, path):
    sizes = sizes_of(figures)
    figure, axes = pyplot.subplots(figsize=(6, 4))
    for question, label in QUESTIONS.items():
        axes.plot(sizes, [figures.median(f"library/{question}", size) for size in sizes], marker=".", label=label)
    scale(axes)
    axes.set_xlabel("blocks")
    axes.set_ylabel("µs per look-up, random order")
    axes.legend(fontsize="small")
    save(figure, path)


def draw_heap(figures, path):
    size = sizes_of(figures)[-1]
    figure, axes = pyplot.subplots(figsize=(6, 3.5))
    peers = [peer for peer in PEERS if peer not in ("protobuf", "json")]
    for place, operation in enumerate(("build", "load")):
        heap = [figures.median(f"{peer}/{operation}", size, "heap") for peer in peers]
        axes.barh([at + 0.2 - 0.4 * place for at in range(len(peers))], heap, 0.4,
                  label="built" if operation == "build" else "loaded")
    axes.set_yticks(range(len(peers)), [PEERS[peer] for peer in peers])
    axes.invert_yaxis()
    axes.set_xlabel(f"bytes of heap per block, {size} blocks")
    axes.legend(fontsize="small", loc="lower center", bbox_to_anchor=(0.5, 1), ncols=2)
    save(figure, path)


def draw(figures, folder):
    folder.mkdir(parents=True, exist_ok=True)
    draw_times(figures, folder / "performance-times.svg")
    draw_questions(figures, folder / "performance-questions.svg")
    draw_heap(figures, folder / "performance-heap.svg")
