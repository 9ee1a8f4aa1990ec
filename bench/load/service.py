"""assistantservice as a process of its own, on a free port of this machine."""

import json
import re
import resource
import subprocess
import urllib.request

MIB = 1024 * 1024


def allow_many_connections():
    """For this process. The service gets what its user has."""
    soft, hard = resource.getrlimit(resource.RLIMIT_NOFILE)
    resource.setrlimit(resource.RLIMIT_NOFILE, (min(hard, 16384), hard))
    return soft, hard


class Service:
    def __init__(self, program, limits):
        def keep_limits():
            resource.setrlimit(resource.RLIMIT_NOFILE, limits)

        self.process = subprocess.Popen(
            [program, "--listen", "127.0.0.1:0"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
            preexec_fn=keep_limits)
        line = self.process.stdout.readline()
        found = re.search(r"http://127\.0\.0\.1:(\d+)$", line.strip())
        if not found:
            raise SystemExit(f"load: the service does not start: {line!r}")
        self.port = int(found.group(1))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.terminate()
        try:
            self.process.wait(10)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()

    def is_running(self):
        return self.process.poll() is None

    def peak_memory(self):
        """The most that was resident so far, in bytes; None where the service has ended."""
        try:
            with open(f"/proc/{self.process.pid}/status", encoding="ascii") as status:
                return next(int(line.split()[1]) * 1024 for line in status if line.startswith("VmHWM"))
        except (OSError, StopIteration):
            return None

    def picture_bytes(self):
        with urllib.request.urlopen(f"http://127.0.0.1:{self.port}/healthz", timeout=60) as reply:
            return json.load(reply)["pictureBytes"]
