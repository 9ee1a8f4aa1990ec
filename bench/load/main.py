"""Loads and attacks assistantservice, and says how it fared: main.py PROGRAM [--quick]

The exit status is 1 where the service ended, took more memory than allowed, left a client that means well unanswered, or
answered too late.
"""

import asyncio
import contextlib
import os
import subprocess
import sys

from client import Results, ask_picture, ask_question, share, watch_health
from service import MIB, Service, allow_many_connections

MOST_MEMORY = 256 * MIB
LONGEST = 2.0
NUMBERS_BODY = 32 * MIB


class Report:
    def __init__(self):
        self.is_good = True

    def line(self, name, text, holds):
        self.is_good = self.is_good and holds
        print(f"{name:<18} {text}{'' if holds else '   MISSED'}", flush=True)

    def clients(self, name, results):
        p50, p99, most = (results.percentile(part) for part in (0.5, 0.99, 1.0))
        holds = results.answered == results.asked and p99 < LONGEST
        self.line(name, f"{results.answered} of {results.asked} answered, {len(results.seconds)} exchanges, "
                        f"p50 {p50 * 1000:.1f} ms, p99 {p99 * 1000:.1f} ms, longest {most * 1000:.0f} ms", holds)
        for failure in sorted(set(results.failures))[:3]:
            print(f"{'':<18}   {failure[:150]}")

    def memory(self, name, service):
        peak = service.peak_memory()
        if peak is None:
            self.line(name, f"the service has ended with {service.process.poll()}", False)
            return
        stored = service.picture_bytes()
        self.line(name, f"{peak // MIB} MiB resident at most, {(peak - stored) // MIB} MiB beyond its pictures "
                        f"(allowed: {MOST_MEMORY // MIB})", peak - stored < MOST_MEMORY)


@contextlib.contextmanager
def attackers(service, seconds, kinds):
    """They are at work inside."""
    program = os.path.join(os.path.dirname(__file__), "attackers.py")
    words = [f"{kind}={count}" for kind, count in kinds.items()]
    process = subprocess.Popen([sys.executable, program, str(service.port), str(seconds), *words],
                               stdout=subprocess.PIPE)
    try:
        if process.stdout.readline() != b"attacking\n":
            raise SystemExit("load: nobody attacks")
        yield
        if process.poll() is not None:
            raise SystemExit("load: the attack ended before the measurement did")
    finally:
        process.kill()
        process.wait()


async def crowd(service, report, scale):
    """Everybody at once."""
    kinds = {"silent": 900 // scale, "slow-head": 60 // scale, "chunk-size": 3, "chunk-extension": 3, "trailer": 2,
             "trailer-line": 2, "chunks": 10}
    questions, pictures, health = Results(), Results(), Results()
    with attackers(service, 300, kinds):
        asking = asyncio.gather(share(10000 // scale, 40, service.port, questions, ask_question),
                                share(1000 // scale, 8, service.port, pictures, ask_picture))
        await asyncio.gather(asking, watch_health(service.port, health, asking.done))
    report.clients("questions", questions)
    report.clients("pictures", pictures)
    report.clients("healthz", health)
    report.memory("memory", service)


async def slow_clients(service, report, seconds):
    """Clients that are slow or silent in the middle of a request."""
    health = Results()
    with attackers(service, seconds + 60, {"silent-body": 64, "slow-head": 600}):
        end = asyncio.get_running_loop().time() + seconds
        await watch_health(service.port, health, lambda: asyncio.get_running_loop().time() > end)
    report.clients("slow, healthz", health)
    report.line("slow, longest", f"{health.percentile(1.0):.3f} s", health.percentile(1.0) < LONGEST)
    report.memory("slow, memory", service)


async def send_numbers(port):
    """The largest body that is taken, all of it small numbers: a tree of them takes many times its size."""
    start, end = b'{"messages":[', b"0]}"
    numbers = b"0," * ((NUMBERS_BODY - len(start) - len(end)) // 2)
    body = start + numbers + end
    reader, writer = await asyncio.open_connection("127.0.0.1", port)
    writer.write(b"POST /ai/texttotext/generate/ HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n"
                 b"Content-Type: application/json\r\nContent-Length: %d\r\n\r\n" % len(body))
    with contextlib.suppress(ConnectionError):
        for at in range(0, len(body), MIB):
            writer.write(body[at:at + MIB])
            await writer.drain()
    with contextlib.suppress(ConnectionError):
        return b'"code":4' in await asyncio.wait_for(reader.read(), 120)
    return False


async def numbers(service, report, count):
    answers = await asyncio.gather(*(send_numbers(service.port) for _ in range(count)))
    report.line("numbers", f"{sum(answers)} of {count} bodies of {NUMBERS_BODY // MIB} MiB refused in words", True)
    report.memory("numbers, memory", service)


def main(program, is_quick):
    report = Report()
    limits = allow_many_connections()
    for scenario, argument in ((crowd, 20 if is_quick else 1), (slow_clients, 5 if is_quick else 20),
                               (numbers, 2 if is_quick else 8)):
        with Service(program, limits) as service:
            asyncio.run(scenario(service, report, argument))
    return 0 if report.is_good else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:] == ["--quick"]))
