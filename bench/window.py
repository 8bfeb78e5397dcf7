#!/usr/bin/env python3
"""Measurements of the window, as a Markdown table.

    bench/window.py [--rounds N] COMMAND...

COMMAND starts the Windows program tintline_window_bench. It drives the real program and, beside
it, a bare loop that inserts the same lines into two list boxes and looks for messages once a
line read and three times a line converted. A time is the median over all rounds, a ratio the
median of the ratios of the rounds; of the times from Esc to the end of a run the worst counts.
"""
import argparse
import os
import subprocess
import sys
from statistics import median

from table import Bars, Table

TIMES = 3  # what reading and converting may take, in times of the bare loop
ESC = 100  # milliseconds until a run that is to end has ended


def measure(command, rounds):
    """Per round: lines, then seconds of opening, bare loop, converting, bare loop, Esc."""
    done = subprocess.run([*command, str(rounds)], stdout=subprocess.PIPE, text=True, check=True)
    return [[float(part) for part in line.split()] for line in done.stdout.splitlines()]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("command", nargs="+", metavar="COMMAND")
    options = parser.parse_args()

    lines, *times = zip(*measure(options.command, options.rounds))
    opening, bare_opening, converting, bare_converting, esc = times
    bars = Bars()
    table = Table(f"window, {lines[0]:,.0f} lines", "time", "beside", "times", "reach")
    for name, mine, bare in (("open", opening, bare_opening),
                             ("convert", converting, bare_converting)):
        times = median(one / other for one, other in zip(mine, bare))
        table.row(name, f"{median(mine) * 1e3:.0f} ms", f"bare loop: {median(bare) * 1e3:.0f} ms",
                  f"{times:.2f}", bars.at_most(times, TIMES))
    worst = max(esc) * 1e3
    table.row("from Esc to the end of a run, worst", f"{worst:.0f} ms", "", "",
              bars.at_most(worst, ESC, " ms"))
    print(f"\n{options.rounds} rounds, {os.cpu_count()} processors, under Wine.\n"
          f"{bars.reached} reached, {bars.missed} missed")


if __name__ == "__main__":
    try:
        main()
    except subprocess.CalledProcessError as error:
        sys.exit(f"the measurement ended with {error.returncode}")
