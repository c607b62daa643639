"""The examples of the documents run as they stand, one after the other."""
import re
import shutil

import pytest

from conftest import SOURCE


@pytest.mark.parametrize("name, number", [("python.md", 10), ("fleet.md", 3)])
def test_examples(name, number, tmp_path, monkeypatch):
    for sample in (SOURCE / "samples").glob("*.prj"):
        shutil.copy(sample, tmp_path)
    monkeypatch.chdir(tmp_path)
    examples = re.findall(r"```python\n(.*?)```", (SOURCE / "docs" / name).read_text(encoding="utf-8"), re.DOTALL)
    assert len(examples) == number
    known = {}
    for example in examples:
        exec(compile(example, name, "exec"), known)
