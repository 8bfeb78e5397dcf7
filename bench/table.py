"""Markdown tables of measurements, and the judgement on what has to be reached."""


class Table:
    def __init__(self, *heads):
        print(f"\n| {' | '.join(heads)} |")
        print("|" + "---|" * len(heads), flush=True)

    def row(self, *cells):
        print(f"| {' | '.join(cells)} |", flush=True)


class Bars:
    """What has to be reached, and how often it was."""

    def __init__(self):
        self.reached = self.missed = 0

    def at_most(self, value, limit, unit=""):
        return self.judged(value <= limit, f"≤ {limit:.3g}{unit}")

    def at_least(self, value, limit, unit=""):
        return self.judged(value >= limit, f"≥ {limit:.3g}{unit}")

    def judged(self, good, text):
        self.reached += good
        self.missed += not good
        return f"{text}: {'ok' if good else '**missed**'}"
