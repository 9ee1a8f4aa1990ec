"""Clients that mean well: what they ask is to be answered, and soon."""

import asyncio
import json
import time

PATIENCE = 60.0


class Connection:
    """One kept connection. A request that meets its end before any byte of the reply is sent once more over a new one."""

    def __init__(self, port):
        self.port = port
        self.reader = self.writer = None

    async def request(self, method, path, body=b""):
        for attempt in range(2):
            is_fresh = self.writer is None
            try:
                return await asyncio.wait_for(self._exchange(method, path, body), PATIENCE)
            except (ConnectionError, asyncio.IncompleteReadError, ValueError):
                self.close()
                if is_fresh or attempt == 1:
                    raise

    async def _exchange(self, method, path, body):
        if self.writer is None:
            self.reader, self.writer = await asyncio.open_connection("127.0.0.1", self.port)
        head = f"{method} {path} HTTP/1.1\r\nHost: 127.0.0.1:{self.port}\r\n"
        if method == "POST":
            head += f"Content-Type: application/json\r\nContent-Length: {len(body)}\r\n"
        self.writer.write(head.encode() + b"\r\n" + body)
        status, headers = parse_head(await self.reader.readuntil(b"\r\n\r\n"))
        content = await self.reader.readexactly(int(headers["content-length"]))
        if headers.get("connection", "").lower() == "close":
            self.close()
        return status, content

    def close(self):
        if self.writer:
            self.writer.close()
        self.reader = self.writer = None


def parse_head(head):
    lines = head.decode("latin-1").split("\r\n")
    headers = dict(line.split(":", 1) for line in lines[1:] if ":" in line)
    return int(lines[0].split()[1]), {name.lower(): value.strip() for name, value in headers.items()}


class Results:
    """What the clients saw: how long each exchange took, and what was not answered."""

    def __init__(self):
        self.seconds = []
        self.asked = 0
        self.failures = []

    @property
    def answered(self):
        return self.asked - len(self.failures)

    def percentile(self, part):
        ordered = sorted(self.seconds)
        return ordered[min(len(ordered) - 1, int(len(ordered) * part))] if ordered else float("inf")


class Asker:
    """Asks one question after the other over one connection, and polls for each answer."""

    def __init__(self, port, results, poll_wait=0.05):
        self.connection = Connection(port)
        self.results = results
        self.poll_wait = poll_wait

    async def run(self, ask, numbers):
        for number in numbers:
            self.results.asked += 1
            try:
                await ask(self, number)
            except (OSError, ValueError, KeyError, asyncio.IncompleteReadError, asyncio.TimeoutError) as failure:
                self.results.failures.append(repr(failure))
        self.connection.close()

    async def timed(self, method, path, body=b""):
        begin = time.monotonic()
        status, content = await self.connection.request(method, path, body)
        self.results.seconds.append(time.monotonic() - begin)
        if status != 200:
            raise ValueError(f"{path}: status {status}")
        return content

    async def post(self, path, body):
        reply = json.loads(await self.timed("POST", path, json.dumps(body).encode()))
        if reply["code"] not in (0, 1):
            raise ValueError(f"{path}: {reply}")
        return reply

    async def answer(self, path, body, is_picture):
        request_id = (await self.post(path, body))["data"]["reqId"]
        while True:
            reply = await self.post("/ai/result/filter/", {"type": is_picture, "reqId": request_id})
            if reply["code"] == 0:
                return reply["data"]["answers"][0]
            await asyncio.sleep(self.poll_wait)


async def ask_question(asker, number):
    layer = number % 99 + 1
    answer = await asker.answer("/ai/texttotext/generate/", {
        "enableDS": False, "enableNet": False,
        "messages": [{"type": False, "content": f"play harbour on layer {layer}"}],
        "mediaList": [{"id": "m1", "name": "Harbour"}, {"id": "m2", "name": "Sunset Beach"}]}, False)
    if f"layer {layer}" not in answer:
        raise ValueError(f"layer {layer}: {answer}")


async def ask_picture(asker, number):
    address = await asker.answer("/ai/texttoimage/generate/", {
        "style": "Monet", "width": 160, "height": 90, "useSR": False, "content": f"harbour {number}",
        "enableLogo": False, "logoPositon": 0, "logoLanguage": False, "logoOpacity": 0.5, "logoContent": ""}, True)
    picture = await asker.timed("GET", "/" + address.split("/", 3)[3])
    if not picture.startswith(b"\x89PNG") or not picture.endswith(b"IEND\xaeB\x60\x82"):
        raise ValueError(f"no picture at {address}")


async def watch_health(port, results, is_over):
    """A new connection each time, as another machine's watchdog has."""
    while not is_over():
        results.asked += 1
        asker = Asker(port, results)
        try:
            await asker.timed("GET", "/healthz")
        except (OSError, ValueError, asyncio.IncompleteReadError, asyncio.TimeoutError) as failure:
            results.failures.append(repr(failure))
        asker.connection.close()
        await asyncio.sleep(0.05)


async def share(count, clients, port, results, ask):
    """So many questions by so many clients at once."""
    await asyncio.gather(*(Asker(port, results).run(ask, range(each, count, clients)) for each in range(clients)))
