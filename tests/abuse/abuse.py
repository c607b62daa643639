"""What the abuse tests share: their length, their dice, and the running of a program that may misbehave."""
import json
import os
import pathlib
import random
import re
import resource
import subprocess
import sys

LONG = os.environ.get("GENVARA_ABUSE") == "long"
SANITIZED = os.environ.get("GENVARA_SANITIZED") == "1"

# Under the sanitizers everything takes some ten times as long.
TIMEOUT = 120 if SANITIZED else 30  # seconds for one run of a program
# A sanitizer's report must not look like one of the program's own statuses.
SANITIZER_STATUS = 99

# A failure as the console program tells it: what failed, a number if it has one, a source, a description.
FAILURE_LINE = re.compile(r"^.+: error( -?\d+)?( from .+)?: \S.*$")


def dice():
    """Dice that can be thrown again: their seed is on standard output, and $GENVARA_ABUSE_SEED sets it.

    The short form always throws the same, so that a build fails for what changed in it; the long form does not.
    """
    given = os.environ.get("GENVARA_ABUSE_SEED")
    seed = int(given) if given else random.SystemRandom().randrange(1 << 32) if LONG else 1
    print(f"GENVARA_ABUSE_SEED={seed}")
    return random.Random(seed)


class Findings:
    """What was found, up to a number that somebody still reads."""
    MOST = 20

    def __init__(self):
        self.all = []

    def add(self, finding):
        self.all.append(finding)
        if len(self.all) <= self.MOST:
            print(f"FOUND: {finding}")

    def __len__(self):
        return len(self.all)

    def status(self):
        """The exit status of a script that found these."""
        print(f"{len(self.all)} finding(s)" if self.all else "nothing found")
        return 1 if self.all else 0


class Run:
    """One run of a program: what it printed, and how it ended, in `odd` if in no way that is allowed."""

    def __init__(self, command, allowed, limit=None, timeout=None, **options):
        environment = dict(os.environ, LC_ALL="C.UTF-8",
                           ASAN_OPTIONS=f"exitcode={SANITIZER_STATUS}:detect_leaks=0",
                           UBSAN_OPTIONS=f"exitcode={SANITIZER_STATUS}:print_stacktrace=1")
        environment.update(options.pop("environment", {}))
        options.setdefault("stdout", subprocess.PIPE)
        if limit is not None:
            options["preexec_fn"] = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
            # As Python does: a file that grows beyond the limit is an error (EFBIG), not a signal.
            options["restore_signals"] = False
        self.status = None
        self.out = self.err = b""
        try:
            done = subprocess.run([str(part) for part in command], stderr=subprocess.PIPE, env=environment,
                                  stdin=subprocess.DEVNULL, timeout=timeout or TIMEOUT, **options)
            self.status, self.out, self.err = done.returncode, done.stdout or b"", done.stderr
        except subprocess.TimeoutExpired:
            pass
        self.odd = self.judge(allowed)

    def judge(self, allowed):
        if self.status is None:
            return "hangs"
        if self.status < 0:
            return f"ends with signal {-self.status}"
        if self.status not in allowed:
            return f"ends with status {self.status}: {self.errors()[-1500:]}"
        if b"Sanitizer" in self.err or b"runtime error:" in self.err:
            return f"a sanitizer reports: {self.errors()[-1500:]}"
        return None

    def errors(self):
        return self.err.decode("utf-8", "replace")

    def tells_failure(self):
        """Whether a line of standard error tells a failure in full."""
        return any(FAILURE_LINE.match(line) for line in self.errors().splitlines())


def strict_json(text):
    """Parses JSON as standards know it: in UTF-8, without NaN and infinities."""
    def refuse(constant):
        raise ValueError(f"{constant} is no JSON")
    return json.loads(text.decode("utf-8"), parse_constant=refuse)


def leftovers(folder, *wanted):
    """Names of a folder that nobody wants there."""
    return sorted(set(os.listdir(folder)) - {pathlib.Path(name).name for name in wanted})


def memory_folder():
    """Where short-lived files lie best: in memory, where there is such a folder, else in the usual place."""
    shared = "/dev/shm"
    return shared if os.access(shared, os.W_OK) else None


def arguments(usage):
    """The paths that a script was called with, as many as its usage names."""
    names = usage.split()
    if len(sys.argv) != len(names):
        sys.exit(f"usage: {usage}")
    return [pathlib.Path(argument).resolve() for argument in sys.argv[1:]]
