"""Prints the ratios that the benchmarks are held to; the exit status is 1 where one is missed.

    ratios.py RESULTS [--some]    --some: what was not measured is left out

What runs in one thread is compared by its processor time, which another program on the machine does not change; what waits
for the network by the clock.
"""

import json
import re
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
    ("mediaListNextQuestion/media:100000", "mediaListFirstQuestion/media:100000", 0.01),
    ("emission<sigslot::signal<int>>/1", "directCalls/1", None),
    ("emission<sigslot::signal<int>>/10", "directCalls/10", None),
    ("emission<sigslot::signal<int>>/100", "directCalls/100", None),
    ("emission<sigslot::signal<int>>/10", "qtDirectSignal/10", 1.1),
    ("packRecord<PictureGenerateInfo>/80", "handPack<PictureGenerateInfo>/80", 2.2),
    ("unpackRecord<PictureGenerateInfo>/80", "handUnpack<PictureGenerateInfo>/80", None),
    ("packRecord<ChatItemBasic>/80", "handPack<ChatItemBasic>/80", 2.2),
    ("unpackRecord<ChatItemBasic>/80", "handUnpack<ChatItemBasic>/80", None),
    ("packRecord<TextGeneratedPack>/2000", "handPack<TextGeneratedPack>/2000", 2.2),
    ("unpackRecord<TextGeneratedPack>/2000", "handUnpack<TextGeneratedPack>/2000", None),
    ("packRecord<TextGeneratedPack>/20000", "handPack<TextGeneratedPack>/20000", 2.2),
    ("unpackRecord<TextGeneratedPack>/20000", "handUnpack<TextGeneratedPack>/20000", None),
    ("packRecord<PicturedGeneratedPack>/80", "handPack<PicturedGeneratedPack>/80", 2.2),
    ("unpackRecord<PicturedGeneratedPack>/80", "handUnpack<PicturedGeneratedPack>/80", None),
    ("typingTick/shape:0/characters:20000", "typingTick/shape:0/characters:100", 2.5),
    ("typingTick/shape:1/characters:20000", "typingTick/shape:1/characters:100", 2.5),
    ("typingTick/shape:0/characters:20000", "literalTick/shape:0/characters:20000", 0.005),
    ("typingTick/shape:1/characters:20000", "literalTick/shape:1/characters:20000", 0.005),
    ("typingTick/shape:2/characters:5000", "literalTick/shape:2/characters:5000", 0.2),
    ("typingTick/shape:3/characters:5000", "literalTick/shape:3/characters:5000", 0.2),
    ("addItem/items:5000", "addItem/items:10", 1.3),
    ("newLineTick/items:5000", "newLineTick/items:10", 1.5),
    ("blankLineTick/items:5000", "blankLineTick/items:10", None),
    # Four times the items may cost 4 to the power of 1.15.
    ("disableAndEnable/items:4000", "disableAndEnable/items:1000", 4.93),
    ("disableAndEnableInCache/items:4000", "disableAndEnableInCache/items:1000", None),
    ("retranslate/items:4000", "retranslate/items:1000", 4.93),
    ("reset/items:4000", "reset/items:1000", 4.93),
    ("equalSheet", "otherSheet", 0.01),
    ("natsRoundTrip/real_time", "bareRoundTrip/real_time", 1.3),
    ("inProcessRoundTrip/real_time", "bareRoundTrip/real_time", None),
    ("nextPaint/real_time", "firstPaint/real_time", 0.01),
    ("pictureArrival/manual_time", "decodeInPlace/real_time", 0.15),
]

# (what is measured, which of its counters, the most that it may be)
COUNTERS = [
    ("textItems/items:1000", "bytes", 100_000),
    ("pictureArrival/manual_time", "processor_ms", 10),
]


def medians(path):
    with open(path, encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    return {
        re.sub("/(iterations|repeats):[0-9]+", "", run["run_name"]): run
        for run in runs
        if run.get("aggregate_name") == "median"
    }


def time_of(name, runs):
    by_clock = name.endswith(("/real_time", "/manual_time"))
    return runs[name]["real_time" if by_clock else "cpu_time"]


class Table:
    def __init__(self):
        self.missed = 0

    def row(self, measured, against, value, limit):
        missed = limit is not None and value > limit
        self.missed += missed
        limit = "-" if limit is None else f"{limit:.3f}"
        print(f"{measured:36} {against:36} {value:10.3f} {limit:>10}{'  MISSED' if missed else ''}")

    def unmeasured(self, name):
        self.missed += 1
        print(f"{name:36} was not measured")


def main():
    path, *options = sys.argv[1:]
    runs = medians(path)
    table = Table()
    print(f"\n{'measured':36} {'against':36} {'ratio':>10} {'limit':>10}")
    for measured, against, limit in LIMITS:
        if measured in runs and against in runs:
            table.row(measured, against, time_of(measured, runs) / time_of(against, runs), limit)
        elif "--some" not in options:
            table.unmeasured(measured)
    for measured, counter, limit in COUNTERS:
        if measured in runs:
            table.row(measured, counter, runs[measured][counter], limit)
        elif "--some" not in options:
            table.unmeasured(measured)
    return 1 if table.missed else 0


if __name__ == "__main__":
    sys.exit(main())
