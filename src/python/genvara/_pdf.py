"""Reports as PDF files, by the program that draws them."""

from __future__ import annotations

import pathlib
import subprocess

from ._errors import RaisedError

_HELPER = "genvara-pdf"


def _fail(reason: str) -> RaisedError:
    return RaisedError(0, "", f"No PDF file can be made: {reason}.")


def drawn(rich_text: bytes, name: str) -> bytes:
    """The pages of a report; `name` is that of its project. The program lies beside the catalogue's own file."""
    helper = (pathlib.Path(__file__).parent / "Genvara.db").resolve().parent / _HELPER
    try:
        done = subprocess.run([helper, f"--name={name}"], input=rich_text, capture_output=True, check=False)
    except FileNotFoundError:
        raise _fail(f"{helper} is missing, which makes it") from None
    except (OSError, ValueError) as failure:
        raise _fail(f"{helper} cannot be started: {failure}") from failure
    if done.returncode != 0 or not done.stdout:
        said = done.stderr.decode(errors="replace").strip().replace("\n", "; ")
        raise _fail(f"{_HELPER} failed" + (f": {said}" if said else ""))
    return done.stdout
