"""Random projects and catalogues to size, each made from a seed."""
