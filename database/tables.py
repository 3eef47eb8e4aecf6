"""The structure of tables, read from what SHOW CREATE TABLE says, and the statement that gives one table another's."""

import re
from dataclasses import dataclass, field

from session import name

# Left by other engines; they have a meaning for the table's file only.
ENGINE_OPTIONS = {"ROW_FORMAT": "DEFAULT", "PACK_KEYS": "DEFAULT", "CHECKSUM": "0", "DELAY_KEY_WRITE": "0",
                  "PAGE_CHECKSUM": "DEFAULT", "TRANSACTIONAL": "DEFAULT"}


@dataclass
class Column:
    name: str
    definition: str  # all behind the name, in the words of SHOW CREATE TABLE

    @property
    def kind(self):
        """text, binary, choice, whole, number, moment or other."""
        word = re.match(r"\w+", self.definition)[0].lower()
        return KINDS.get(word, "other")

    @property
    def generated(self):
        found = re.search(r"(?:GENERATED ALWAYS )?AS \((.*)\) (?:VIRTUAL|STORED|PERSISTENT)", self.definition)
        return found and found[1]

    @property
    def charset(self):
        found = re.search(r"CHARACTER SET (\w+)", self.definition)
        return found and found[1]

    @property
    def length(self):
        found = re.match(r"\w+\((\d+)", self.definition)
        return found and int(found[1])

    @property
    def takes_null(self):
        return "NOT NULL" not in self.definition.split(" COMMENT ")[0]

    @property
    def touched_by_updates(self):
        return "ON UPDATE" in self.definition.upper().split(" COMMENT ")[0]


KINDS = {word: kind for kind, words in {
    "text": "char varchar tinytext text mediumtext longtext",
    "binary": "binary varbinary tinyblob blob mediumblob longblob",
    "choice": "enum set",
    "whole": "tinyint smallint mediumint int bigint year",
    "number": "decimal float double",
    "moment": "date datetime timestamp"}.items() for word in words.split()}


@dataclass
class Structure:
    columns: dict = field(default_factory=dict)  # by name in small letters, in their order
    keys: dict = field(default_factory=dict)     # definition by name, PRIMARY for the primary key
    options: dict = field(default_factory=dict)

    @staticmethod
    def read(session, database, table):
        return Structure.of(session.value(f"SHOW CREATE TABLE {name(database)}.{name(table)}", 1))

    @staticmethod
    def of(text):
        structure = Structure()
        for line in text.split("\n")[1:]:
            line = line.strip()
            key = re.match(r"(?:(UNIQUE|FULLTEXT|SPATIAL) )?KEY `([^`]+)`|PRIMARY KEY", line)
            if line.startswith("`"):
                column = Column(*re.match(r"`((?:[^`]|``)+)` (.*?),?$", line).groups())
                structure.columns[column.name.lower()] = column
            elif key:
                structure.keys[key[2] or "PRIMARY"] = re.sub(r",$", "", line)
            elif line.startswith(") ENGINE"):
                structure.options = read_options(line)
        return structure

    def key_columns(self, key):
        return re.findall(r"`((?:[^`]|``)+)`", self.keys[key][self.keys[key].index("("):])

    def unique_keys(self):
        return [key for key, words in self.keys.items() if key == "PRIMARY" or words.startswith("UNIQUE")]


def read_options(line):
    options = dict(re.findall(r"(\w+)=('(?:[^']|'')*'|\S+)", line))
    options.pop("AUTO_INCREMENT", None)
    # Written only where it is not the character set's own.
    options.setdefault("COLLATE", "")
    return options


def changes(now, wanted):
    """What has to be done to a table, as what and which in plain words and the part of an ALTER TABLE. Columns and
    keys of its own it keeps, but no unique keys, which would refuse what the program writes."""
    return change_options(now, wanted) + change_columns(now, wanted) + change_keys(now, wanted)


def alike(now, wanted, *options):
    return all(now.options.get(option) == wanted.options[option] for option in options)


def change_options(now, wanted):
    options = {option: value for option, value in now.options.items()
               if option in wanted.options or option in ENGINE_OPTIONS}
    if options == wanted.options:
        return []
    parts = [f"ENGINE={wanted.options['ENGINE']}",
             f"DEFAULT CHARACTER SET {wanted.options['CHARSET']}" +
             (f" COLLATE {wanted.options['COLLATE']}" if wanted.options["COLLATE"] else ""),
             f"COMMENT={wanted.options['COMMENT']}"]
    parts += [f"{option}={value}" for option, value in ENGINE_OPTIONS.items() if option in options]
    words = [value for option, value in wanted.options.items() if value != options.get(option) and option != "COMMENT"]
    return [("to", ", ".join(words) or "another comment", ", ".join(parts))]


def change_columns(now, wanted):
    found, before = [], "FIRST"
    ordered = [key for key in now.columns if key in wanted.columns] == [key for key in wanted.columns if key in now.columns]
    same_letters = alike(now, wanted, "CHARSET", "COLLATE")
    for key, column in wanted.columns.items():
        there = now.columns.get(key)
        target = f"{name(column.name)} {column.definition} {before}"
        if there is None:
            found.append(("new column", column.name, f"ADD COLUMN {target}"))
        elif there != column or not ordered or not same_letters:
            found.append(("column", column.name, f"CHANGE COLUMN {name(there.name)} {target}"))
        before = f"AFTER {name(column.name)}"
    return found


def change_keys(now, wanted):
    found = []
    wanted_columns = [wanted.key_columns(key) for key in wanted.keys]
    for key in now.keys:
        in_the_way = key in wanted.keys or key in now.unique_keys() or now.key_columns(key) in wanted_columns
        if now.keys[key] != wanted.keys.get(key) and in_the_way:
            found.append(("without key", key, "DROP PRIMARY KEY" if key == "PRIMARY" else f"DROP KEY {name(key)}"))
    for key, words in wanted.keys.items():
        if now.keys.get(key) != words:
            found.append(("new key", key, f"ADD {words}"))
    return found
