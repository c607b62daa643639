"""A word processor that is there and does not start counts as missing: the test of the pages is skipped and says why.

    test_skipping.py GENVARA-CLI SOURCE-FOLDER
"""
import os
import pathlib
import subprocess
import sys
import tempfile

TEST = pathlib.Path(__file__).with_name("test_word_processor.py")
SKIPPED = 77

# Word processors that cannot be used.
BROKEN = {"fails": "exit 81", "prints nothing": "exit 0", "crashes": "kill -ABRT $$"}


def main():
    failures = 0
    for name, script in BROKEN.items():
        with tempfile.TemporaryDirectory() as folder:
            soffice = pathlib.Path(folder) / "soffice"
            soffice.write_text(f"#!/bin/sh\n{script}\n")
            soffice.chmod(0o755)
            done = subprocess.run([sys.executable, "-B", TEST, *sys.argv[1:]], capture_output=True, text=True, timeout=100,
                                  env={**os.environ, "PATH": f"{folder}:{os.environ['PATH']}"})
        if (done.returncode, done.stderr) != (SKIPPED, "") or not done.stdout.startswith("skipped: "):
            print(f"a word processor that {name}: status {done.returncode}, {done.stdout}{done.stderr}")
            failures += 1
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
