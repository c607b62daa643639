"""The one failure of the program."""


class RaisedError(Exception):
    """A failure as the program tells it: its number, the member that raised it, and a sentence."""

    def __init__(self, number: int, source: str, description: str) -> None:
        super().__init__(number, source, description)
        self.number = number
        self.source = source
        self.description = description

    def __str__(self) -> str:
        where = f" ({self.number}, {self.source})" if self.source else f" ({self.number})"
        return self.description + where
