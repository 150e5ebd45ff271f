"""Runs benchmarks, each in a process of its own, and the tool on the same circuit."""

import json
import os
import pathlib
import re
import statistics
import subprocess
import sys
import time

LOADS = ("load", "save-loaded", "load-file", "copy-bytes")  # need what "save" leaves
# By their names in the tables. What a command writes is not there before, or the tool would look at what it replaces.
TOOL_COMMANDS = {"show": "show {design}", "show --native": "show --native {design}", "check": "check {design}",
                 "export": "export {design} -o {netlist}", "import": "import {netlist} -o {copy}",
                 "diff": "diff {design} {copy}", "set, of one element": "set {design} block0.width=0.6 -o {one}",
                 "set, of all": "set {design} *.width=0.6 -o {all}"}
TOOL_FILES = {"netlist": "tool.yml", "copy": "tool.vrl", "one": "set-one.vrl", "all": "set-all.vrl"}


class Progress:
    """A line on a terminal that counts what is done."""

    def __init__(self, total):
        self.total, self.done = total, 0

    def step(self):
        self.done += 1
        if sys.stderr.isatty():
            print(f"\r{self.done} of {self.total} runs", end="\n" if self.done == self.total else "", file=sys.stderr)


class Bench:
    def __init__(self, folder):
        self.folder = folder
        self.program = folder / "bin" / "vrl_bench"
        self.results = folder / "results"
        self.results.mkdir(exist_ok=True)
        plugin = next((folder / "plugins").glob("lib_wn_benchStartUp.so.*"))
        self.environment = dict(os.environ, BENCH_FOLDER=str(self.results), BENCH_PLUGIN=str(plugin))

    def names(self):
        """The benchmarks that there are, as "PEER/OPERATION"."""
        listed = subprocess.run([str(self.program), "--benchmark_list_tests"], capture_output=True, text=True, check=True)
        return list(dict.fromkeys(line.rsplit("/", 2)[0] for line in listed.stdout.split()))

    def command(self, name, count):
        return [str(self.program), f"--benchmark_filter=^{name}/{count}/"]

    def run(self, name, count):
        """Microseconds of each of `count` blocks, look-ups or files; bytes and live heap of each, where they count."""
        done = subprocess.run(self.command(name, count) + ["--benchmark_format=json"],
                              env=self.environment, capture_output=True, text=True, check=True)
        result = json.loads(done.stdout)["benchmarks"][0]
        if result.get("error_occurred"):
            sys.exit(f"bench: {name}/{count}: {result['error_message']}")
        return {"time": result["real_time"] / count, "bytes": result.get("bytes"), "heap": result.get("heap")}

    def prepare(self, names, count):
        """Saves the circuits that the loads among these need."""
        for peer in {name.split("/")[0] for name in names if name.split("/")[1] in LOADS}:
            self.run(f"{peer}/save", count)

    def instructions(self, name):
        """Instructions of each: what the second 500 of 1,000 take, so that what is done once does not count."""
        counts = []
        for count in (500, 1000):
            self.prepare([name], count)
            done = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
                                   "--collect-atstart=no", "--toggle-collect=bench_measured"]
                                  + self.command(name, count),
                                  env=self.environment, capture_output=True, text=True, check=True)
            counts.append(int(re.search(r"Collected : (\d+)", done.stderr).group(1)))
        return (counts[1] - counts[0]) // 500

    def tool(self, count, repetitions):
        """Median seconds and mebibytes of each command of the tool on the circuit of so many blocks."""
        runs = [self.tool_once(count) for _ in range(repetitions)]
        return {command: {what: statistics.median(run[command][what] for run in runs)
                          for what in ("seconds", "megabytes")} for command in TOOL_COMMANDS}

    def tool_once(self, count):
        configuration = self.results / "VRLConfig.ini"
        configuration.write_text(f"sodlldir_clear\nsodlldir_linux = {self.folder.resolve() / 'plugins'}\n"
                                 "sodllpostfix_linux = .so.${version}\nsodllfile = benchKinds\n")
        self.run("library/save", count)
        paths = {name: str(self.results / file) for name, file in TOOL_FILES.items()}
        for written in paths.values():
            pathlib.Path(written).unlink(missing_ok=True)
        paths["design"] = str(self.results / f"library-{count}.bin")
        figures = {}
        for command, line in TOOL_COMMANDS.items():
            words = [word.format(**paths) for word in line.split()]
            start = time.monotonic()
            child = subprocess.Popen([str(self.folder / "bin" / "vrl"), *words, "--config", str(configuration)],
                                     stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            _, status, usage = os.wait4(child.pid, 0)
            child.returncode = os.waitstatus_to_exitcode(status)
            if child.returncode > 1:
                sys.exit(f"bench: vrl {command} failed")
            figures[command] = {"seconds": time.monotonic() - start, "megabytes": usage.ru_maxrss / 1024}
        return figures


class Figures:
    """The figures of all runs, by name and count."""

    def __init__(self):
        self.runs = {}

    def add(self, name, count, run):
        self.runs.setdefault((name, count), []).append(run)

    def has(self, name, count):
        return (name, count) in self.runs

    def median(self, name, count, what="time"):
        return statistics.median(run[what] for run in self.runs[name, count])

    def runs_of(self, name, count):
        return len(self.runs[name, count])

    def spread(self, name, count):
        """The largest difference from the median, as a part of it."""
        middle = self.median(name, count)
        return max(abs(run["time"] - middle) for run in self.runs[name, count]) / middle

    def raw(self):
        return [{"name": name, "count": count, "runs": runs} for (name, count), runs in self.runs.items()]

    @classmethod
    def of(cls, raw):
        figures = cls()
        for entry in raw:
            figures.runs[entry["name"], entry["count"]] = entry["runs"]
        return figures
