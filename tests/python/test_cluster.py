"""Fleets on a real scheduler with two workers: the answers are those of one process, whatever happens on the way."""
import os
import signal
import sqlite3
import subprocess
import sys

import pytest

import genvara
from cluster import Cluster, until
from conftest import SOURCE
from faulty_work import Faulty
from genvara import fleet
from genvara.fleet import _pieces, _store
from resumed_study import DRAWN

HOSPITAL = SOURCE / "samples/hospital.prj"
SAMPLES = sorted((SOURCE / "samples").glob("*.prj"))


@pytest.fixture(scope="module")
def cluster(tmp_path_factory):
    made = Cluster(tmp_path_factory.mktemp("cluster"))
    try:
        made.add_worker()
        made.add_worker()
        yield made
    finally:
        made.stop()


@pytest.fixture
def client(cluster):
    while sum(worker.poll() is None for worker in cluster.workers) < 2:
        cluster.add_worker()
    with cluster.client() as made:
        made.wait_for_workers(2, timeout=120)
        yield made


def pieces_in(out):
    if not out.exists():
        return 0
    with sqlite3.connect(f"file:{out}?mode=ro", uri=True) as database:
        try:
            return database.execute("SELECT count(*) FROM pieces").fetchone()[0]
        except sqlite3.OperationalError:
            return 0


def test_sites(client, catalogue, tmp_path):
    projects = [*(SAMPLES * 5), tmp_path / "gone.prj", genvara.read(HOSPITAL)]
    alone = list(fleet.size(projects, catalogue, piece=7))
    assert list(fleet.size(projects, catalogue, piece=7, client=client)) == alone
    assert alone[5 * len(SAMPLES)]["error_number"] == 53


def test_chances(client, hospital, catalogue):
    alone = fleet.chances(hospital, DRAWN, runs=500, seed=7, catalogue=catalogue)
    shared = fleet.chances(hospital, DRAWN, runs=500, seed=7, piece=40, catalogue=catalogue, client=client)
    assert list(shared) == list(alone)
    assert shared.sets() == alone.sets() and shared.of_set("MV900D") == alone.of_set("MV900D")


def test_both_workers_work(client, hospital, catalogue):
    def who(dask_worker):
        return sorted(name for name in dask_worker.plugins if name.startswith("genvara-"))

    fleet.chances(hospital, DRAWN, runs=100, seed=7, piece=10, catalogue=catalogue, client=client)
    # The catalogue is with each of them, once for all studies of this client.
    told = client.run(who)
    assert len(told) == 2 and all(len(plugins) == 1 for plugins in told.values())


def test_a_worker_that_is_killed(client, cluster, hospital, catalogue, tmp_path):
    alone = fleet.chances(hospital, DRAWN, runs=8000, seed=7, piece=200, catalogue=catalogue)
    killed = []

    def kill(done, total):
        if done == 5:
            number = next(number for number, worker in enumerate(cluster.workers) if worker.poll() is None)
            cluster.kill_worker(number)
            killed.append(number)

    shared = fleet.chances(hospital, DRAWN, runs=8000, seed=7, piece=200, catalogue=catalogue, client=client,
                           out=tmp_path / "runs.db", progress=kill)
    assert len(killed) == 1
    assert list(shared) == list(alone) and shared.sets() == alone.sets()


def test_a_worker_that_comes_later(client, cluster, hospital, catalogue):
    added = []

    def add(done, total):
        if done == 2:
            cluster.add_worker()
            client.wait_for_workers(3, timeout=120)
            added.append(done)

    shared = fleet.chances(hospital, DRAWN, runs=1000, seed=7, piece=20, catalogue=catalogue, client=client, progress=add)
    assert added
    assert list(shared) == list(fleet.chances(hospital, DRAWN, runs=1000, seed=7, catalogue=catalogue))


def run_faulty(client, catalogue, folder, failures, retries):
    store = _store.Store(folder / "out.db", {"kind": "test"}, ("number", "version"), False)
    try:
        _pieces.work_through(store, Faulty(str(folder), failures), [0, 1, 2], catalogue, client, retries, None)
    finally:
        rows = list(store.rows())
        store.close()
    return rows


def test_a_piece_that_fails_at_first(client, catalogue, tmp_path):
    assert run_faulty(client, catalogue, tmp_path, 2, 2) == [(number, catalogue.version) for number in range(3)]
    assert (tmp_path / "tried").read_text() == "xxx"


def test_a_piece_that_keeps_failing(client, catalogue, tmp_path):
    with pytest.raises(RuntimeError, match="out of luck") as raised:
        run_faulty(client, catalogue, tmp_path, 99, 1)
    assert (tmp_path / "tried").read_text() == "xx"
    assert "piece 1 of the study" in raised.value.__notes__[0] and "resume=True" in raised.value.__notes__[1]


def test_a_catalogue_that_differs_on_a_worker(client, cluster, hospital, catalogue):
    fleet.chances(hospital, DRAWN, runs=10, seed=7, catalogue=catalogue, client=client)

    def spoil(dask_worker):
        import pathlib
        file, = pathlib.Path(dask_worker.local_directory).glob("genvara-*.db")
        file.write_bytes(file.read_bytes() + b"x")

    client.run(spoil)
    with pytest.raises(genvara.RaisedError, match="not the catalogue of the study any more"):
        fleet.chances(hospital, DRAWN, runs=10, seed=7, catalogue=catalogue, client=client)
    # Another client sends it anew.
    with cluster.client() as other:
        fleet.chances(hospital, DRAWN, runs=10, seed=7, catalogue=catalogue, client=other)


def test_another_catalogue_is_another_one_on_workers_too(client, hospital, catalogue, tmp_path):
    file = tmp_path / "own.db"
    genvara.Catalogue.build(SOURCE / "data/catalog", file)
    with sqlite3.connect(file) as database:
        database.execute("UPDATE Gensets SET [GensetModel] = 'X' || [GensetModel]")
    study = fleet.chances(hospital, DRAWN, runs=20, seed=7, catalogue=genvara.Catalogue(file), client=client)
    assert {row["model_num"][0] for row in study if row["model_num"]} == {"X"}
    assert fleet.chances(hospital, DRAWN, runs=20, seed=7, catalogue=catalogue, client=client)[0]["model_num"][0] != "X"


def test_a_client_that_is_killed(client, cluster, hospital, catalogue, tmp_path):
    out = tmp_path / "runs.db"
    script = os.path.join(os.path.dirname(__file__), "resumed_study.py")
    process = subprocess.Popen([sys.executable, "-B", script, str(cluster.file), str(HOSPITAL), str(out), "12000", "200"])
    try:
        until(lambda: pieces_in(out) >= 3 or process.poll() is not None)
    finally:
        process.send_signal(signal.SIGKILL)
        process.wait()
    there = pieces_in(out)
    assert 3 <= there < 60
    told = []
    shared = fleet.chances(hospital, DRAWN, runs=12000, seed=7, piece=200, catalogue=catalogue, client=client, out=out,
                           resume=True, progress=lambda done, total: told.append(done))
    assert told == list(range(there + 1, 61))  # no piece twice, none lost
    assert list(shared) == list(fleet.chances(hospital, DRAWN, runs=12000, seed=7, catalogue=catalogue))
