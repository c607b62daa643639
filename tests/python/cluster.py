"""A scheduler and workers as processes of their own, on the loopback."""
import contextlib
import os
import signal
import subprocess
import sys
import time

from distributed import Client

import genvara  # noqa: F401  (workers find it as we do)

WAIT = 120.0


class Cluster:
    def __init__(self, folder):
        self.folder = folder
        self.processes = []
        self.workers = []
        address = folder / "scheduler.json"
        self.start("dask-scheduler", "--host", "127.0.0.1", "--port", "0", "--no-dashboard", "--no-show",
                   "--scheduler-file", address)
        self.file = address
        until(address.exists)

    def start(self, program, *arguments):
        # Workers import this module, and the tests' own functions.
        here = os.path.dirname(os.path.abspath(__file__))
        environment = {**os.environ, "PYTHONPATH": os.pathsep.join([*os.environ.get("PYTHONPATH", "").split(os.pathsep), here]),
                       "DASK_DISTRIBUTED__SCHEDULER__WORKER_TTL": "20s", "PYTHONDONTWRITEBYTECODE": "1"}
        with open(self.folder / f"{len(self.processes)}.log", "wb") as log:
            process = subprocess.Popen([sys.executable, f"/usr/bin/{program}", *map(str, arguments)], stdout=log, stderr=log,
                                       env=environment, cwd=self.folder, start_new_session=True)
        self.processes.append(process)
        return process

    def add_worker(self):
        folder = self.folder / f"worker{len(self.workers)}"
        folder.mkdir()
        self.workers.append(self.start("dask-worker", "--scheduler-file", self.file, "--no-nanny", "--nthreads", "1",
                                       "--no-dashboard", "--host", "127.0.0.1", "--local-directory", folder,
                                       "--name", f"worker{len(self.workers)}"))

    def client(self):
        return Client(scheduler_file=str(self.file), timeout=WAIT, set_as_default=False)

    def kill_worker(self, number):
        os.kill(self.workers[number].pid, signal.SIGKILL)
        self.workers[number].wait()

    def stop(self):
        for process in reversed(self.processes):
            with contextlib.suppress(ProcessLookupError):
                os.killpg(process.pid, signal.SIGKILL)
            process.wait()


def until(truth):
    end = time.monotonic() + WAIT
    while not truth():
        assert time.monotonic() < end, "it did not come to that"
        time.sleep(0.05)
