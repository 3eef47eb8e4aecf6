"""Brings a centre's tables to the structure of schema.sql, a table at a time, and names what stands in the way; started
by database/install. A table is changed whole or not at all, so this can be stopped and started again."""

import argparse
import re
import select
import subprocess
import sys
import time

from obstacles import Obstacles
from session import Failed, ServerError, Session, end_on_signals, name, quoted, say
from tables import Structure, changes

DATABASE, PATTERN = "posdb", "tamsora_pattern"
# Whatever would lose a part of a value fails, and an id of 0 stays 0.
SESSION = ("SET SESSION sql_mode = 'STRICT_ALL_TABLES,NO_AUTO_VALUE_ON_ZERO,NO_ENGINE_SUBSTITUTION', "
           "lock_wait_timeout = 120, group_concat_max_len = 10000")


class BringUp:
    def __init__(self, options):
        self.options = options
        self.lock = self.open()
        self.lock.hold("tamsora install", "Another database/install is at work; nothing was done.")
        self.work = self.open()
        self.in_the_way, self.changed, self.right = [], [], 0

    def open(self):
        session = Session(self.options.client, self.options.settings)
        session.rows(SESSION)
        return session

    def run(self):
        self.make_pattern()
        try:
            self.bring_up_database()
            tables = self.tables()
            for number, table in enumerate(tables, 1):
                self.attend(f"{number} of {len(tables)}  {table}", table)
        finally:
            # The old session may be gone or wait for a long statement.
            self.open().rows(f"DROP DATABASE IF EXISTS {PATTERN}")
        self.sum_up()
        return 1 if self.in_the_way else 0

    def make_pattern(self):
        """A scratch database with the tables as they should be. A run that was killed may have left one."""
        self.work.rows(f"DROP DATABASE IF EXISTS {PATTERN}")
        self.work.rows(f"CREATE DATABASE {PATTERN} CHARACTER SET utf8mb4")
        with open(self.options.schema, "rb") as schema:
            if subprocess.run([*self.work.command, PATTERN], stdin=schema).returncode != 0:
                raise Failed("The tables of schema.sql cannot be made beside posdb: nothing was compared.")

    def bring_up_database(self):
        letters = self.work.rows("SELECT DEFAULT_CHARACTER_SET_NAME FROM information_schema.SCHEMATA "
                                 f"WHERE SCHEMA_NAME = '{DATABASE}'")
        if not letters:
            self.step(f"{DATABASE}: to be made", f"CREATE DATABASE {DATABASE} CHARACTER SET utf8mb4")
        elif letters != [["utf8mb4"]]:
            self.step(f"{DATABASE}: new tables get utf8mb4", f"ALTER DATABASE {DATABASE} CHARACTER SET utf8mb4")

    def step(self, words, statement):
        say(words)
        if not self.options.check_only:
            self.work.rows(statement)

    def tables(self):
        """What the schema holds, and what the counters and groups of the centre have of the same kind."""
        self.there = dict(self.work.rows("SELECT TABLE_NAME, TABLE_TYPE FROM information_schema.TABLES "
                                         f"WHERE TABLE_SCHEMA = '{DATABASE}'"))
        self.patterns = {row[0] for row in self.work.rows(f"SHOW TABLES FROM {PATTERN}")}
        of_ours = {table for table in self.there if pattern_of(table) in self.patterns}
        return sorted(self.patterns | of_ours, key=lambda table: (re.sub(r"\d+$", "", table), number_of(table)))

    def attend(self, title, table):
        try:
            if table not in self.there:
                text = self.work.value(f"SHOW CREATE TABLE {PATTERN}.{name(table)}", 1)
                self.changed.append(table)
                self.step(f"{title}: is missing and is made",
                          text.replace("CREATE TABLE ", f"CREATE TABLE {DATABASE}.", 1))
            elif self.there[table] != "BASE TABLE":
                self.stands_in_the_way(table, [f"is a {self.there[table].lower()} and no table"])
            else:
                self.bring_up_table(title, table)
        except ServerError as error:
            self.stands_in_the_way(table, [str(error)])
            self.work = self.open()

    def bring_up_table(self, title, table):
        place = f"{DATABASE}.{name(table)}"
        if not self.options.check_only:
            # A change that a killed run had begun goes on in the server; this waits for its end.
            self.work.rows(f"LOCK TABLES {place} WRITE")
            self.work.rows("UNLOCK TABLES")
        now = Structure.read(self.work, DATABASE, table)
        wanted = Structure.read(self.work, PATTERN, pattern_of(table))
        todo = changes(now, wanted)
        if not todo:
            self.right += 1
            return
        say(f"{title}: {in_words(todo)}")
        obstacles = Obstacles(self.work, place, now, wanted)
        empties = obstacles.empties()
        lines = obstacles.misfits() + obstacles.doubles()
        for there, empty, count in empties:
            (say if self.options.fill_empty else lines.append)(f"{there.name}: {count} rows hold {empty.words}")
        if lines:
            self.stands_in_the_way(table, lines)
        else:
            self.changed.append(table)
            if not self.options.check_only:
                self.change(place, now, wanted, empties, ", ".join(part for _, _, part in todo))

    def change(self, place, now, wanted, empties, parts):
        start = time.monotonic()
        self.work.rows(f"LOCK TABLES {place} WRITE")
        count = self.work.value(f"SELECT COUNT(*) FROM {place}")
        for there in loosened(now, wanted, empties):
            self.long(f"ALTER TABLE {place} CHANGE COLUMN {name(there.name)} {name(there.name)} "
                      "VARCHAR(255) CHARACTER SET utf8mb4 COLLATE utf8mb4_bin NULL")
        untouched = "".join(f", {name(column.name)} = {name(column.name)}" for column in now.columns.values()
                            if column.touched_by_updates)
        for _, empty, _ in empties:
            self.long(f"UPDATE {place} SET {empty.assignment}{untouched} WHERE {empty.condition}")
        self.long(f"ALTER TABLE {place} {parts}")
        if self.work.value(f"SELECT COUNT(*) FROM {place}") != count:
            raise Failed(f"{place} does not have the {count} rows any more that it had. Ask for help; the rest is as it was.")
        self.work.rows("UNLOCK TABLES")
        say(f"    done in {time.monotonic() - start:.1f} s, {count} rows")

    def long(self, statement):
        """A statement that may take long, with a word every five seconds."""
        start = time.monotonic()
        session = self.work.value("SELECT CONNECTION_ID()")
        self.work.begin(statement)
        while not select.select([self.work.process.stdout], [], [], 5)[0]:
            state = self.lock.rows(f"SELECT STATE FROM information_schema.PROCESSLIST WHERE ID = {quoted(session)}")
            say(f"    {time.monotonic() - start:.0f} s: {state[0][0] if state else 'ending'} …")
        self.work.end()

    def stands_in_the_way(self, table, lines):
        self.in_the_way.append(table)
        for line in lines:
            print(f"{table}: {line}", flush=True)

    def sum_up(self):
        would = "would be made or changed" if self.options.check_only else "made or changed"
        say(f"{self.right} tables are as they should be, {len(self.changed)} {would}, {len(self.in_the_way)} left as they "
            "were because of what is named above.")


def loosened(now, wanted, empties):
    """Columns that need an intermediate form: words of a choice would turn into their places, and an empty text into no
    time, which the column must be able to hold."""
    hollow = [there.name.lower() for there, empty, _ in empties if empty.assignment.endswith("= NULL")]
    return [column for key, column in now.columns.items() if key in hollow or
            (column.kind == "choice" and key in wanted.columns and wanted.columns[key].kind != "text")]


def in_words(todo):
    """Such as "InnoDB, utf8mb4; columns b_id, b_field; new key invoice"."""
    said = {}
    for kind, what, _ in todo:
        said.setdefault(kind, []).append(what)
    return "; ".join(f"{kind} {', '.join(names)}" for kind, names in said.items())


def pattern_of(table):
    return re.sub(r"^(tbl_(?:counter|shift|booking_clipboard|specialgroup(?=[1-5]$)))[1-9]\d*$", r"\g<1>1", table)


def number_of(table):
    return int(re.search(r"\d*$", table)[0] or 0)


def main():
    parser = argparse.ArgumentParser()
    for option in ("--client", "--settings", "--schema"):
        parser.add_argument(option, required=True)
    parser.add_argument("--check-only", action="store_true")
    parser.add_argument("--fill-empty", action="store_true")
    end_on_signals()
    try:
        return BringUp(parser.parse_args()).run()
    except Failed as failure:
        say(failure)
        return 1


if __name__ == "__main__":
    sys.exit(main())
