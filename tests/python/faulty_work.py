"""Work of pieces that fails, for workers to do."""
import dataclasses
import pathlib


@dataclasses.dataclass(frozen=True)
class Faulty:
    """Fails at the second piece: the first times that it is tried, or each time."""

    folder: str
    failures: int

    def __call__(self, catalogue, piece):
        if piece == 1:
            tried = pathlib.Path(self.folder, "tried")
            count = len(tried.read_text()) if tried.exists() else 0
            tried.write_text("x" * (count + 1))
            if count < self.failures:
                raise RuntimeError("out of luck")
        return [(piece, catalogue.version)], []
