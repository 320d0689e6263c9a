#!/usr/bin/env python3
"""Runs the benchmarks and prints one table of ratios, each figure over its baseline.

A program measures a figure and its baselines in the same run, repetition by repetition in random
order; what is compared are the medians. Fails when a bar is missed.
"""

import argparse
import dataclasses
import json
import math
import os
import pathlib
import statistics
import subprocess
import sys
import typing

MIB = 1024  # in KiB

# What a repetition costs: time of this thread alone, by the clock on the wall, or for each look-up.
CPU = "cpu_time"
WALL = "real_time"
EACH = "items_per_second"
PEAK = "peak_kib"


@dataclasses.dataclass(frozen=True)
class Figure:
    """One line of the table for every size measured, or a single one."""

    title: str
    family: str
    baseline: str
    cost: str
    bar: typing.Optional[float] = None
    smallest: int = 0  # size from which on the bar holds; below it the ratio is only shown
    largest: float = math.inf  # size up to which the bar holds
    growth_bar: typing.Optional[float] = None
    growth_from: int = 0  # size from which on the growth counts
    difference: bool = False  # compared by subtraction, in MiB


@dataclasses.dataclass(frozen=True)
class Program:
    name: str
    figures: typing.Tuple[Figure, ...]
    repetitions: int = 20
    quick_repetitions: int = 5


PROGRAMS = (
    Program(
        "bench_refill",
        (Figure("refill / plain model", "refill", "baseline", CPU, 1.15, growth_bar=1.10),),
    ),
    Program(
        "bench_refill_view",
        (
            Figure("refill in view / row by row", "refill-view", "slots", CPU, 0.95),
            Figure("refill in view / plain model", "refill-view", "baseline", CPU),
        ),
    ),
    Program(
        "bench_change",
        tuple(
            Figure(f"{change}, {kind} / plain model", f"{change}-{kind}", "baseline", CPU,
                   4 if kind == "random" else 2, largest=255,
                   growth_bar=1 if kind == "random" else 0.25)
            for kind in ("number", "rising", "random")
            for change in ("append", "remove", "change")
        ),
    ),
    Program(
        "bench_deselect",
        (Figure("remove selected / plain model", "deselect", "baseline", CPU, 1, growth_bar=1.25),),
    ),
    Program(
        "bench_lookup",
        (
            Figure("look-up / hash", "lookup", "hash", EACH, 1.5),
            Figure("look-up / search", "lookup", "search", EACH, 0.02, smallest=1000),
        ),
    ),
    Program("bench_event", (Figure("event / bare call", "event", "baseline", WALL, 1.15),)),
    Program(
        "bench_paint",
        (
            Figure("paint x1 / pixmap, texts", "paint-1x", "pixmap", CPU, 1.05),
            Figure("paint x1 / SVG renderer", "paint-1x", "renderer", CPU, 0.55),
            Figure("paint x2 / pixmap, texts", "paint-2x", "pixmap", CPU, 1.05),
            Figure("paint x2 / SVG renderer", "paint-2x", "renderer", CPU, 0.65),
        ),
    ),
    Program(
        "bench_select",
        (Figure("select / plain selection", "select", "baseline", CPU, 6, growth_bar=1.25),),
    ),
    Program(
        "bench_drop",
        (Figure("drop of 50 / plain model", "drop", "baseline", CPU, 2, growth_bar=1.25),),
    ),
    # The program reports the time of its thread as if it were that of the clock.
    Program(
        "bench_search",
        (
            Figure("search, all / stock proxies", "search-all", "baseline", WALL, 0.5,
                   growth_bar=1.25, growth_from=1000),
            Figure("search, tenth / stock proxies", "search-tenth", "baseline", WALL, 0.15,
                   growth_bar=1.25, growth_from=1000),
            Figure("search, one / stock proxies", "search-one", "baseline", WALL, 0.25,
                   growth_bar=1.25, growth_from=1000),
            Figure("search, none / stock proxies", "search-none", "baseline", WALL, 0.35,
                   growth_bar=1.25, growth_from=1000),
            Figure("search, clear / stock proxies", "search-clear", "baseline", WALL, 0.05,
                   growth_bar=1.25, growth_from=1000),
            Figure("search, all, painted / stock", "search-all-painted", "baseline", WALL, 1.05),
            Figure("search, tenth, painted / stock", "search-tenth-painted", "baseline", WALL,
                   0.8),
            Figure("search, all, painted / completer", "search-all-painted", "completer", WALL,
                   1.25),
            Figure("search, tenth, painted / completer", "search-tenth-painted", "completer", WALL,
                   1.25),
            Figure("search, all / completer", "search-all", "completer", WALL, 1.25),
            Figure("search, tenth / completer", "search-tenth", "completer", WALL, 1.25),
            Figure("search, one / completer", "search-one", "completer", WALL, 1.25),
            Figure("search, none / completer", "search-none", "completer", WALL, 1.25),
            Figure("search, clear / completer", "search-clear", "completer", WALL),
        ),
    ),
    Program(
        "bench_start",
        (
            Figure("whole panel / bare window", "start", "baseline", WALL, 1.6),
            Figure("peak - bare window, MiB", "start", "baseline", PEAK, 10, difference=True),
        ),
        repetitions=30,
        quick_repetitions=10,
    ),
    Program(
        "bench_replay",
        (Figure("replay / session", "replay", "session", WALL, 0.4),),
        repetitions=3,
        quick_repetitions=1,
    ),
)


@dataclasses.dataclass(frozen=True)
class Row:
    title: str
    size: str
    value: str
    bar: str
    growth: str
    missed: bool


class BenchmarkFailed(Exception):
    pass


def run(program: Program, build: pathlib.Path, quick: bool) -> typing.List[dict]:
    """The repetitions that the program made."""
    path = build / "bin" / program.name
    repetitions = program.quick_repetitions if quick else program.repetitions
    command = [
        str(path),
        "--benchmark_format=json",
        "--benchmark_enable_random_interleaving=true",
        f"--benchmark_repetitions={repetitions}",
        "--benchmark_min_time=0.05",
    ]
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8")
    if not path.exists():
        raise BenchmarkFailed(f"{path} is missing: build the preset 'bench' first")
    done = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise BenchmarkFailed(f"{path} failed:\n{done.stderr}")
    runs = [entry for entry in json.loads(done.stdout)["benchmarks"]
            if entry["run_type"] == "iteration"]
    if not runs:
        raise BenchmarkFailed(f"{path} measured nothing")
    return runs


def medians(runs: typing.List[dict], cost: str) -> typing.Dict[typing.Tuple[str, str, int], float]:
    """Median cost by family, side and size; size 0 where there is none."""
    samples: typing.Dict[typing.Tuple[str, str, int], typing.List[float]] = {}
    for entry in runs:
        family, side, *rest = entry["run_name"].split("/")
        size = int(rest[0]) if rest and rest[0].isdigit() else 0
        if cost in entry:
            value = 1 / entry[cost] if cost == EACH else entry[cost]
            samples.setdefault((family, side, size), []).append(value)
    return {key: statistics.median(values) for key, values in samples.items()}


def slope(points: typing.Dict[int, float]) -> float:
    """Exponent of the power of the size that fits best."""
    logs = [(math.log(size), math.log(cost)) for size, cost in points.items()]
    mean_x = statistics.fmean(x for x, _ in logs)
    mean_y = statistics.fmean(y for _, y in logs)
    return (sum((x - mean_x) * (y - mean_y) for x, y in logs)
            / sum((x - mean_x) ** 2 for x, _ in logs))


def rows(figure: Figure, runs: typing.List[dict]) -> typing.List[Row]:
    costs = medians(runs, figure.cost)
    sizes = sorted(size for family, side, size in costs
                   if family == figure.family and side == figure.baseline)
    if not sizes:
        raise BenchmarkFailed(f"nothing was measured for '{figure.title}'")
    table = []
    for size in sizes:
        product = costs[figure.family, "product", size]
        baseline = costs[figure.family, figure.baseline, size]
        value = (product - baseline) / MIB if figure.difference else product / baseline
        holds = figure.bar is not None and figure.smallest <= size <= figure.largest
        table.append(Row(
            figure.title,
            str(size) if size else "",
            f"{value:.2f}" if value >= 0.1 or value < 0 else f"{value:.5f}",
            f"{figure.bar:g}" if holds else "",
            "",
            holds and value > figure.bar,
        ))
    if figure.growth_bar is not None:
        product, baseline = (
            {size: cost for (family, side, size), cost in costs.items()
             if family == figure.family and side == wanted and size >= figure.growth_from}
            for wanted in ("product", figure.baseline))
        exponent = slope(product)
        growth = f"{exponent:.2f}"
        bar = figure.growth_bar
        # Larger trees leave the caches of the machine, the baseline's too. Some are too slow for it.
        if baseline.keys() == product.keys():
            growth += f" ({slope(baseline):.2f})"
            bar = max(bar, slope(baseline))
        table.append(Row(figure.title, "all", "", f"{figure.growth_bar:g}", growth, exponent > bar))
    return table


def print_table(table: typing.List[Row]) -> None:
    head = ("figure", "n", "ratio", "bar", "growth", "")
    lines = [(row.title, row.size, row.value, row.bar, row.growth,
              "MISSED" if row.missed else "ok" if row.bar else "") for row in table]
    widths = [max(len(line[column]) for line in [head, *lines]) for column in range(len(head))]
    for line in [head, *lines]:
        cells = [line[0].ljust(widths[0])]
        cells += [text.rjust(width) for text, width in zip(line[1:-1], widths[1:-1])]
        print("  ".join([*cells, line[-1]]).rstrip())


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=pathlib.Path, default=pathlib.Path("build/bench"),
                        help="build directory (default: %(default)s)")
    parser.add_argument("--quick", action="store_true",
                        help="fewer repetitions: enough to see that all runs, not to judge")
    arguments = parser.parse_args()

    table = []
    try:
        for program in PROGRAMS:
            runs = run(program, arguments.build, arguments.quick)
            for figure in program.figures:
                table += rows(figure, runs)
    except BenchmarkFailed as failure:
        print(failure, file=sys.stderr)
        return 2
    print_table(table)
    return 1 if any(row.missed for row in table) else 0


if __name__ == "__main__":
    sys.exit(main())
