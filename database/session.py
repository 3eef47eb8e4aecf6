"""What the scripts for a centre's server share in Python: one connection through the client program, and plain words."""

import re
import signal
import subprocess
import sys
import tempfile


class Failed(Exception):
    """What the script was asked for cannot be done; its text is for the operator."""


class ServerError(Failed):
    """The server refused a statement; its text is the server's."""


def say(text):
    print(text, file=sys.stderr, flush=True)


def end_on_signals():
    """From here on a signal ends the script as an exit does, so that what it made is taken away."""
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(number, lambda *_: sys.exit(130))


def quoted(text):
    return "'" + text.replace("\\", "\\\\").replace("'", "''") + "'"


def name(identifier):
    return "`" + identifier.replace("`", "``") + "`"


def plain(field):
    """A field as the client's batch mode writes it."""
    parts = field.split("\\\\")
    return "\\".join(part.replace("\\n", "\n").replace("\\t", "\t").replace("\\0", "\0") for part in parts)


class Session:
    """One session of the client program, open until it is closed or this script dies: then its locks are gone too.
    Statements end with the session at the first one that the server refuses."""

    def __init__(self, client, settings, database=""):
        self.command = [client, f"--defaults-file={settings}", "--default-character-set=utf8mb4", "--batch",
                        "--skip-column-names", "--unbuffered", "--skip-reconnect", *([database] if database else [])]
        self.errors = tempfile.TemporaryFile()
        # Out of reach of a Ctrl+C in the terminal: this script ends it.
        self.process = subprocess.Popen(self.command, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=self.errors, start_new_session=True)
        self.asked = 0

    def rows(self, statement):
        """Runs a statement; its rows as lists of texts, an SQL NULL as the text NULL."""
        self.begin(statement)
        return self.end()

    def begin(self, statement):
        """Sends a statement on without waiting for it; end() does."""
        self.asked += 1
        try:
            self.process.stdin.write(f"{statement};\nSELECT 'end of {self.asked}';\n".encode())
            self.process.stdin.flush()
        except BrokenPipeError:
            self.fail()

    def end(self):
        rows = []
        for line in self.process.stdout:
            if line == b"end of %d\n" % self.asked:
                return rows
            rows.append([plain(field) for field in line.decode(errors="replace").rstrip("\n").split("\t")])
        return self.fail()

    def value(self, statement, column=0):
        return self.rows(statement)[0][column]

    def fail(self):
        self.process.wait()
        self.errors.seek(0)
        said = re.findall("^ERROR.*", self.errors.read().decode(errors="replace"), re.MULTILINE)
        raise ServerError("\n".join(said) or "The connection to the server was lost.")

    def hold(self, lock, words):
        """Holds a named lock of the server as long as the session lasts; the one of a run that just ended is waited for."""
        self.rows("SET SESSION wait_timeout = 604800")
        if self.value(f"SELECT GET_LOCK({quoted(lock)}, 5)") != "1":
            raise Failed(words)

    def close(self):
        self.process.stdin.close()
        self.process.stdout.close()
        self.process.wait()
        self.errors.close()

    def __enter__(self):
        return self

    def abandon(self):
        """Closes it whatever state it is in."""
        try:
            self.close()
        except BrokenPipeError:
            pass

    def __exit__(self, *_):
        self.abandon()
