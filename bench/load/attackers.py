"""Clients that mean harm, in a process of their own: attackers.py PORT SECONDS KIND=COUNT...

Bounded on every side: the service on this machine alone, so many connections at once, so many seconds, and so many bytes
from each. One that is thrown out comes back, at most once in half a second.
"""

import asyncio
import itertools
import sys
import time

from service import MIB, allow_many_connections

BYTES_OF_EACH = 96 * MIB
PIECE = 64 * 1024
HEAD = b"POST /ai/result/filter/ HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Type: application/json\r\n"
CHUNKED = HEAD + b"Transfer-Encoding: chunked\r\n\r\n"


async def silent(_reader, writer):
    await asyncio.sleep(3600)


async def silent_body(_reader, writer):
    writer.write(HEAD + b"Content-Length: 1000\r\n\r\n")
    await asyncio.sleep(3600)


async def slow_head(_reader, writer):
    for byte in itertools.chain(HEAD, itertools.cycle(b"x-more: 1\r\n")):
        writer.write(bytes([byte]))
        await writer.drain()
        await asyncio.sleep(0.5)


def endless(start, piece):
    async def send(_reader, writer):
        writer.write(start)
        for _ in range(BYTES_OF_EACH // len(piece)):
            writer.write(piece)
            await writer.drain()
            await asyncio.sleep(0.01)
        await asyncio.sleep(3600)

    return send


KINDS = {
    "silent": silent,
    "silent-body": silent_body,
    "slow-head": slow_head,
    "chunk-size": endless(CHUNKED, b"0" * PIECE),
    "chunk-extension": endless(CHUNKED + b"5;", b"e" * PIECE),
    "trailer": endless(CHUNKED + b"0\r\n", (b"x: " + b"t" * 1019 + b"\r\n") * (PIECE // 1024)),
    "trailer-line": endless(CHUNKED + b"0\r\nx: ", b"t" * PIECE),
    "chunks": endless(CHUNKED, b"%x\r\n" % PIECE + b"1" * PIECE + b"\r\n"),
    "head-line": endless(b"GET /", b"a" * PIECE),
}


async def attack(port, act):
    """Until the other side hangs up."""
    reader, writer = await asyncio.open_connection("127.0.0.1", port)
    acting = asyncio.ensure_future(act(reader, writer))
    thrown_out = asyncio.ensure_future(wait_for_end(reader))
    await asyncio.wait([acting, thrown_out], return_when=asyncio.FIRST_COMPLETED)
    acting.cancel()
    thrown_out.cancel()
    await asyncio.gather(acting, thrown_out, return_exceptions=True)
    writer.close()


async def wait_for_end(reader):
    while await reader.read(PIECE):
        pass


async def attack_again(port, act, end):
    while time.monotonic() < end:
        try:
            await asyncio.wait_for(attack(port, act), end - time.monotonic())
        except (OSError, asyncio.TimeoutError):
            pass
        await asyncio.sleep(0.5)


async def main(port, seconds, wanted):
    end = time.monotonic() + seconds
    kinds = itertools.chain.from_iterable([kind] * int(count) for kind, count in wanted)
    attacks = [asyncio.ensure_future(attack_again(port, KINDS[kind], end)) for kind in kinds]
    await asyncio.sleep(1)
    print("attacking", flush=True)
    await asyncio.gather(*attacks)


if __name__ == "__main__":
    allow_many_connections()
    asyncio.run(main(int(sys.argv[1]), float(sys.argv[2]), [word.split("=") for word in sys.argv[3:]]))
