"""A host that notes the commands it is handed."""


class HostCommands:
    """The default program of the host's scheme, in a session that has no other."""

    def __init__(self, session):
        self._notes = session.folder / "commands"
        program = session.folder / "host"
        program.write_text(f"#!/bin/sh\nprintf '%s\\n' \"$1\" >>'{self._notes}'\n")
        program.chmod(0o700)
        applications = session.folder / "data" / "applications"
        applications.mkdir()
        (applications / "host.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName=Host\nExec={program} %u\n"
            "MimeType=x-scheme-handler/plenzoevent;\n")
        (session.folder / "config" / "mimeapps.list").write_text(
            "[Default Applications]\nx-scheme-handler/plenzoevent=host.desktop\n")

    def urls(self):
        """The commands so far; those of one moment may come in any order."""
        return sorted(self._notes.read_text().splitlines() if self._notes.exists() else [])

    def heard(self):
        """The same, without their scheme."""
        return [url.removeprefix("plenzoevent://") for url in self.urls()]
