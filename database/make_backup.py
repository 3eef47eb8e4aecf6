"""Makes a dump of posdb, restores it, compares the two and only then calls the file a backup; database/backup starts it."""

import argparse
import gzip
import os
import re
import select
import subprocess
import sys
import tempfile
import time

from session import Failed, ServerError, Session, end_on_signals, name, quoted, say

DATABASE, SCRATCH = "posdb", "tamsora_restored"
FILE = re.compile(r"^posdb-\d{4}-\d\d-\d\d-\d{6}\.sql\.gz(\.part)?$")
ATTEMPTS = 2
PATIENCE = 20  # seconds that counters may be kept from writing
BLOCK = 1 << 20


class Unnoted(Exception):
    """The backup stands, and nobody sees in posdb that it does."""


class Backup:
    def __init__(self, options):
        self.options = options
        self.lock, self.work = self.open(), self.open()
        self.lock.hold("tamsora backup", "Another backup of this server is being made; there is no new one.")
        self.name = time.strftime("posdb-%Y-%m-%d-%H%M%S.sql.gz")
        self.part = os.path.join(options.to, self.name + ".part")

    def open(self):
        session = Session(self.options.client, self.options.settings)
        session.rows("SET SESSION lock_wait_timeout = 60")
        session.rows("SET SESSION TRANSACTION ISOLATION LEVEL REPEATABLE READ")
        return session

    def run(self):
        try:
            self.remove([file for file in os.listdir(self.options.to) if FILE.match(file) and file.endswith(".part")])
            try:
                rows = self.checked_dump()
            finally:
                self.drop_scratch()
            self.keep_file()
        finally:
            self.remove([os.path.basename(self.part)])
        try:
            self.note(rows)
        except Failed as failure:
            raise Unnoted(f"{self.name} is a checked backup, but posdb could not take a note of it: {failure}") from failure
        if self.options.keep:
            self.remove(self.backups()[:-self.options.keep])

    def checked_dump(self):
        """The number of rows in a dump that is as it should be."""
        for attempt in range(1, ATTEMPTS + 1):
            try:
                wanted = self.make_dump()
                self.restore()
                with self.open() as session:
                    session.rows("START TRANSACTION")
                    say("Adding up what was restored …")
                    compare(wanted, self.figures(session, SCRATCH, self.tables(SCRATCH)))
                return sum(int(count) for _, count, _ in wanted.values())
            except Failed as failure:
                if attempt == ATTEMPTS:
                    raise
                say(f"{failure}\nOnce more …")
                self.work.abandon()  # and with it the locks it may hold
                self.work = self.open()

    def tables(self, database):
        tables = self.work.rows("SELECT TABLE_NAME FROM information_schema.TABLES "
                                f"WHERE TABLE_SCHEMA = '{database}' AND TABLE_TYPE = 'BASE TABLE'")
        return [row[0] for row in tables]

    def make_dump(self):
        """Writes the dump and gives the figures of the same moment: while nobody can write, both take their snapshots.
        The clipboards are left out of the locks, because a counter that waits to empty one would keep the dump waiting."""
        tables = [table for table in self.tables(DATABASE) if not is_clipboard(table)]
        clipboards = [table for table in self.tables(DATABASE) if is_clipboard(table)]
        if not tables:
            raise Failed(f"There is nothing in {DATABASE}.")

        def go_on():
            if self.knows_snapshots():
                self.work.rows("UNLOCK TABLES")

        say(f"Dumping {DATABASE} …")
        self.work.rows("LOCK TABLES " + ", ".join(f"{DATABASE}.{name(table)} READ" for table in tables))
        with self.open() as snapshot:
            snapshot.rows("START TRANSACTION WITH CONSISTENT SNAPSHOT")
            self.dump(["--single-transaction", DATABASE, *tables], go_on)
            if clipboards:
                self.dump(["--skip-lock-tables", "--no-data", DATABASE, *clipboards])
            say("Adding it up …")
            found = self.figures(snapshot, DATABASE, tables + clipboards)
        self.work.rows("UNLOCK TABLES")
        return found

    def knows_snapshots(self):
        """Whether all tables do; others stay locked to the end."""
        return self.work.value("SELECT COUNT(*) FROM information_schema.TABLES "
                               f"WHERE TABLE_SCHEMA = '{DATABASE}' AND ENGINE <> 'InnoDB'") == "0"

    def dump(self, what, begun=None):
        """A dump from its beginning, which calls begun() when it has its snapshot, or one behind what is dumped already."""
        command = [self.options.dump, f"--defaults-file={self.options.settings}", "--no-tablespaces", "--hex-blob",
                   "--default-character-set=utf8mb4", *what]
        with tempfile.TemporaryFile() as errors:
            dump = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=errors)
            try:
                tail = self.write_part(dump.stdout, begun)
                code = dump.wait()
            finally:
                dump.kill()
                dump.wait()
                dump.stdout.close()
            errors.seek(0)
            words = errors.read().decode(errors="replace").strip()
        if code != 0:
            raise Failed(f"The dump failed: {words}")
        if b"-- Dump completed" not in tail:
            raise Failed("The dump has no end.")

    def write_part(self, dump, begun):
        """Writes a dump down to the disk, calls begun() when its first table has come, and gives its end."""
        tail = b""
        way = os.O_TRUNC if begun else os.O_APPEND
        with open(os.open(self.part, os.O_WRONLY | os.O_CREAT | way, 0o600), "wb") as file:
            with gzip.GzipFile(self.name, "wb", 6, file) as packed:
                while True:
                    if begun and not select.select([dump], [], [], PATIENCE)[0]:
                        raise Failed("The dump does not begin; the counters are not kept waiting any longer.")
                    block = dump.read1(BLOCK)
                    if not block:
                        break
                    tail = tail[-200:] + block
                    if begun and b"-- Table structure" in tail:
                        begun()
                        begun = None
                    packed.write(block)
            file.flush()
            os.fsync(file.fileno())
        return tail[-200:]

    def restore(self):
        say("Restoring it into a scratch database …")
        self.drop_scratch()
        self.work.rows(f"CREATE DATABASE {SCRATCH} CHARACTER SET utf8mb4")
        with tempfile.TemporaryFile() as errors, gzip.open(self.part) as packed:
            client = subprocess.Popen([*self.work.command, SCRATCH], stdin=subprocess.PIPE, stderr=errors)
            try:
                while block := packed.read(BLOCK):
                    client.stdin.write(block)
            except BrokenPipeError:
                pass
            finally:
                client.communicate()
            if client.returncode != 0:
                errors.seek(0)
                raise Failed("The dump cannot be restored: " + errors.read().decode(errors="replace").strip())

    def figures(self, session, database, tables):
        """By table: its structure, its count of rows, and the sum of a checksum over all columns of each row. The session
        is in a transaction; nothing of the tables stays locked in it."""
        found = {}
        for table in tables:
            place = f"{database}.{name(table)}"
            session.rows("SAVEPOINT table_begins")
            structure = session.value(f"SHOW CREATE TABLE {place}", 1)
            columns = [row[0] for row in session.rows(f"SHOW COLUMNS FROM {place}")]
            texts = ", ".join(f"QUOTE({name(column)})" for column in columns)
            rows = ("0", "0") if is_clipboard(table) else session.rows(
                f"SELECT COUNT(*), COALESCE(SUM(CRC32(CONCAT_WS(',', {texts}))), 0) FROM {place}")[0]
            found[table] = (re.sub(r" AUTO_INCREMENT=\d+", "", structure), *rows)
            session.rows("ROLLBACK TO SAVEPOINT table_begins")
        return found

    def keep_file(self):
        """From here on it is a backup, also after a power failure."""
        os.rename(self.part, self.part.removesuffix(".part"))
        folder = os.open(self.options.to, os.O_RDONLY)
        os.fsync(folder)
        os.close(folder)

    def note(self, rows):
        words = f"backup checked {self.name}, {rows} rows"
        self.work.rows(f"INSERT INTO {DATABASE}.tbl_log SET log_counter = 0, log_staffname = 'backup', "
                       f"log_datetime = NOW(), log_do = {quoted(words)}")
        say(f"{os.path.join(self.options.to, self.name)}: {words}")

    def backups(self):
        return sorted(file for file in os.listdir(self.options.to) if FILE.match(file) and file.endswith(".gz"))

    def remove(self, files):
        for file in files:
            path = os.path.join(self.options.to, file)
            if os.path.exists(path):
                os.remove(path)

    def drop_scratch(self):
        with self.open() as session:
            session.rows(f"DROP DATABASE IF EXISTS {SCRATCH}")


def is_clipboard(table):
    """What a counter copied last; counters empty these in a way that a snapshot does not survive."""
    return re.fullmatch(r"tbl_booking_clipboard\d+", table) is not None


def compare(wanted, restored):
    for table in sorted(wanted.keys() | restored.keys()):
        both = wanted.get(table, "---"), restored.get(table, "---")
        for what, one, other in zip(("structure", "count of rows", "sum"), *both):
            if one != other:
                raise Failed(f"The restored {table} is not the one that was dumped: its {what} differs.")


def main():
    parser = argparse.ArgumentParser()
    for option in ("--client", "--dump", "--settings", "--to"):
        parser.add_argument(option, required=True)
    parser.add_argument("--keep", type=int, default=0)
    end_on_signals()
    try:
        Backup(parser.parse_args()).run()
        return 0
    except Unnoted as failure:
        say(failure)
        return 1
    except (Failed, OSError) as failure:
        say(f"{failure}\nThere is no new backup.")
        return 1


if __name__ == "__main__":
    sys.exit(main())
