import os
import pathlib
import tempfile

import hypothesis
import pytest
from hypothesis.configuration import set_hypothesis_home_dir

import genvara

# Nothing is written into the source tree, and every run tries the same.
set_hypothesis_home_dir(os.path.join(tempfile.gettempdir(), "genvara-hypothesis"))
hypothesis.settings.register_profile("tests", database=None, derandomize=True)
hypothesis.settings.load_profile("tests")

# Of programs that tests start, those of Python alone want what a sanitized module needs from the start.
WITH_MODULE = dict(os.environ)
os.environ.pop("LD_PRELOAD", None)

SOURCE = pathlib.Path(os.environ["GENVARA_SOURCE"])
CLI = os.environ["GENVARA_CLI"]


@pytest.fixture(scope="session")
def catalogue():
    return genvara.Catalogue()


@pytest.fixture
def hospital():
    return genvara.read(SOURCE / "samples/hospital.prj")
