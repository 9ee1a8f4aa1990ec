"""Prints the ratios that the benchmarks are held to; the exit status is 1 where one is missed."""

import json
import sys

# (what is measured, what it is measured against, the most that the first may cost in terms of the second)
LIMITS = [
    ("question/real_time", "bareExchanges/real_time", 1.15),
    ("textRequest/history:10/media:10", "toJsonAlone/history:10/media:10", 1.3),
    ("textRequest/history:100/media:10", "toJsonAlone/history:100/media:10", 1.3),
    ("textRequest/history:1000/media:10", "toJsonAlone/history:1000/media:10", 1.3),
    ("textRequest/history:10000/media:10", "toJsonAlone/history:10000/media:10", 1.3),
    ("textRequest/history:10/media:1000", "toJsonAlone/history:10/media:1000", 1.3),
    ("textRequest/history:10/media:100000", "toJsonAlone/history:10/media:100000", 1.3),
    ("mediaListNextQuestion/media:100000", "mediaListFirstQuestion/media:100000/iterations:5", 0.01),
]


def medians(path):
    with open(path, encoding="utf-8") as file:
        runs = json.load(file)["benchmarks"]
    return {run["run_name"]: run["real_time"] for run in runs if run.get("aggregate_name") == "median"}


def main():
    times = medians(sys.argv[1])
    missed = 0
    print(f"\n{'measured':44} {'against':52} {'ratio':>8} {'limit':>8}")
    for measured, against, limit in LIMITS:
        if measured not in times or against not in times:
            continue  # a filter left it out
        ratio = times[measured] / times[against]
        missed += ratio > limit
        print(f"{measured:44} {against:52} {ratio:8.3f} {limit:8.3f}{'  MISSED' if ratio > limit else ''}")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
