"""Memory files as a host sends them, and as it must not."""
import contextlib
import fcntl
import os

ALL_SEALS = fcntl.F_SEAL_SHRINK | fcntl.F_SEAL_GROW | fcntl.F_SEAL_WRITE | fcntl.F_SEAL_SEAL


@contextlib.contextmanager
def sealed_file(contents, seals=ALL_SEALS):
    """An open memory file with these bytes and seals."""
    with os.fdopen(os.memfd_create("batch", os.MFD_CLOEXEC | os.MFD_ALLOW_SEALING), "r+b") as file:
        file.write(contents)
        file.flush()
        fcntl.fcntl(file.fileno(), fcntl.F_ADD_SEALS, seals)
        yield file
