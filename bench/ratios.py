"""Prints the ratios that the benchmarks are held to; the exit status is 1 where one is missed.

What runs in one thread is compared by its processor time, which another program on the machine does not change; what waits
for the network by the clock.
"""

import json
import sys

# (what is measured, what it is measured against, the most that the first may cost in terms of the second; None: no limit)
LIMITS = [
    ("question/real_time", "bareExchanges/real_time", 1.15),
    ("textRequest/history:10/media:10", "toJsonAlone/history:10/media:10", 1.3),
    ("textRequest/history:100/media:10", "toJsonAlone/history:100/media:10", 1.3),
    ("textRequest/history:1000/media:10", "toJsonAlone/history:1000/media:10", 1.3),
    ("textRequest/history:10000/media:10", "toJsonAlone/history:10000/media:10", 1.3),
    ("textRequest/history:10/media:1000", "toJsonAlone/history:10/media:1000", 1.3),
    ("textRequest/history:10/media:100000", "toJsonAlone/history:10/media:100000", 1.3),
    ("mediaListNextQuestion/media:100000", "mediaListFirstQuestion/media:100000/iterations:5", 0.01),
    ("emission<sigslot::signal<int>>/1", "directCalls/1", None),
    ("emission<sigslot::signal<int>>/10", "directCalls/10", None),
    ("emission<sigslot::signal<int>>/100", "directCalls/100", None),
    ("emission<sigslot::signal<int>>/10", "qtDirectSignal/10", 1.1),
    ("typingTick/shape:0/characters:20000/iterations:240", "typingTick/shape:0/characters:100/iterations:240", 2.5),
    ("typingTick/shape:1/characters:20000/iterations:240", "typingTick/shape:1/characters:100/iterations:240", 2.5),
    ("typingTick/shape:0/characters:20000/iterations:240", "literalTick/shape:0/characters:20000/iterations:12", 0.005),
    ("typingTick/shape:1/characters:20000/iterations:240", "literalTick/shape:1/characters:20000/iterations:12", 0.005),
    ("typingTick/shape:2/characters:5000/iterations:240", "literalTick/shape:2/characters:5000/iterations:12", 0.2),
    ("typingTick/shape:3/characters:5000/iterations:240", "literalTick/shape:3/characters:5000/iterations:12", 0.2),
    ("addItem/items:5000/iterations:30", "addItem/items:10/iterations:30", 1.3),
    ("newLineTick/items:5000/iterations:60", "newLineTick/items:10/iterations:60", 1.5),
    # Four times the items may cost 4 to the power of 1.15.
    ("disableAndEnable/items:4000/iterations:10", "disableAndEnable/items:1000/iterations:10", 4.93),
    ("retranslate/items:4000/iterations:6", "retranslate/items:1000/iterations:6", 4.93),
    ("reset/items:4000/iterations:2", "reset/items:1000/iterations:2", 4.93),
    ("nextPaint/real_time", "firstPaint/iterations:20/real_time", 0.01),
]


def medians(path):
    with open(path, encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    return {
        run["run_name"]: run["real_time" if run["run_name"].endswith("/real_time") else "cpu_time"]
        for run in runs
        if run.get("aggregate_name") == "median"
    }


def main():
    times = medians(sys.argv[1])
    missed = 0
    print(f"\n{'measured':52} {'against':52} {'ratio':>8} {'limit':>8}")
    for measured, against, limit in LIMITS:
        if measured not in times or against not in times:
            continue  # a filter left it out
        ratio = times[measured] / times[against]
        verdict = f"{limit:8.3f}" if limit else f"{'-':>8}"
        if limit and ratio > limit:
            missed += 1
            verdict += "  MISSED"
        print(f"{measured:52} {against:52} {ratio:8.3f} {verdict}")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
