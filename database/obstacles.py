"""What in a table's rows stands in the way of another structure: values that would not fit, rows that would be double,
and empty values, which become another kind of nothing."""

import re
from dataclasses import dataclass

from session import name, quoted

NAMED = 20  # of each kind in each table; the rest is counted

SLOT = "^[0-9]{4}-[0-9]{2}-[0-9]{2} (0[1-9]|1[0-9]|2[0-4]):00:00$"
MOMENT = "^ *[0-9]{4}-[0-9]{1,2}-[0-9]{1,2}( [0-9]{1,2}:[0-9]{1,2}(:[0-9]{1,2})?)? *$"
RANGES = {"tinyint": 1 << 8, "smallint": 1 << 16, "mediumint": 1 << 24, "int": 1 << 32, "bigint": 1 << 64}


@dataclass
class Empty:
    """A condition on rows whose value is empty, and the assignment that makes it what the new column calls empty."""
    condition: str
    assignment: str
    words: str


def faults(there, target):
    """Conditions on rows that do not fit, with what is to be said of them."""
    text, wanted = text_of(there), target.kind
    if target.charset == "ascii" and target.name.endswith("_datetime"):
        wrong = f"{text} NOT REGEXP {quoted(SLOT)} OR CAST(LEFT({text}, 10) AS DATE) IS NULL"
        return [(f"{name(there.name)} IS NULL OR {wrong}", "is no slot")]
    if there.kind == "other" and wanted != "text":
        return [("TRUE", f"is of a kind that cannot become a {wanted}")]
    if wanted == "text":
        return text_faults(there, target, text)
    filled = f"TRIM({text}) <> '' AND "
    return [(f"{filled}({condition})", words) for condition, words in
            {"whole": whole_faults, "number": number_faults, "moment": moment_faults}[wanted](there, target, text)]


def text_of(column):
    value = name(column.name)
    return f"CONVERT({value if column.kind in ('text', 'binary') else f'CAST({value} AS CHAR)'} USING utf8mb4)"


def text_faults(there, target, text):
    found = []
    if target.length:
        found.append((f"CHAR_LENGTH({text}) > {target.length}", f"is too long, {target.length} letters fit"))
    if there.kind == "binary":
        found.append((f"CONVERT({text} USING binary) <> {name(there.name)}", "is no text"))
    return found


def whole_faults(there, target, text):
    span, signed = RANGES[re.match(r"\w+", target.definition)[0]], "unsigned" not in target.definition
    low, high = (-span // 2, span // 2 - 1) if signed else (0, span - 1)
    return [(f"{text} NOT REGEXP '^ *[-+]?[0-9]+([.]0*)? *$'", "is no whole number"),
            (f"{text} REGEXP '^ *[-+]?[0-9]+([.]0*)? *$' AND CAST({text} AS DECIMAL(65,0)) NOT BETWEEN {low} AND {high}",
             "is a number that does not fit")]


def number_faults(there, target, text):
    size = re.match(r"decimal\((\d+),(\d+)\)", target.definition)
    if not size:
        return [(f"{text} NOT REGEXP '^ *[-+]?[0-9]*[.]?[0-9]+(e[-+]?[0-9]+)? *$'", "is no number")]
    digits, places = int(size[1]), int(size[2])
    number = "'^ *[-+]?[0-9]*[.]?[0-9]+ *$'"
    return [(f"{text} NOT REGEXP {number}", "is no number"),
            (f"{text} REGEXP {number} AND (ABS(CAST({text} AS DECIMAL(65,{places + 8}))) >= 1e{digits - places} OR "
             f"{text} REGEXP '[.][0-9]{{{places}}}0*[1-9]')", "is a number that does not fit")]


def moment_faults(there, target, text):
    if there.kind == "moment":
        return [(f"MICROSECOND({name(there.name)}) <> 0", "has parts of a second")]
    return [(f"{text} NOT REGEXP {quoted(MOMENT)} OR CAST({text} AS DATETIME) IS NULL", "is no time")]


def empties(there, target):
    """What is empty in a way that the new column does not know."""
    value, found = name(there.name), []
    numbered = "AUTO_INCREMENT" in target.definition or target.charset == "ascii"
    if not target.takes_null and there.takes_null and not numbered:
        default = re.search(r"DEFAULT ('(?:[^']|'')*'|\S+)", target.definition)
        if default:
            found.append(Empty(f"{value} IS NULL", f"{value} = {default[1]}", f"NULL, which would become {default[1]}"))
    if target.kind in ("whole", "number", "moment") and there.kind in ("text", "choice", "binary"):
        nothing = "NULL" if target.kind == "moment" else "0"
        found.append(Empty(f"TRIM({text_of(there)}) = ''", f"{value} = {nothing}",
                           f"an empty text, which would become {nothing}"))
    return found


def null_faults(there, target):
    left_over = not target.takes_null and there.takes_null and not empties(there, target) and target.charset != "ascii"
    return [(f"{name(there.name)} IS NULL", "is NULL")] if left_over else []


class Obstacles:
    """Looks through one table (DATABASE.TABLE in quotes as `place`), which other sessions may use meanwhile."""

    def __init__(self, session, place, now, wanted):
        self.session, self.place, self.now, self.wanted = session, place, now, wanted
        primary = [key for key in (wanted.key_columns("PRIMARY") if "PRIMARY" in wanted.keys else []) if key in now.columns]
        self.row = primary[0] if primary else None
        same_letters = all(now.options.get(key) == wanted.options[key] for key in ("CHARSET", "COLLATE"))
        self.changed = [(now.columns[key], target) for key, target in wanted.columns.items()
                        if key in now.columns and not (same_letters and now.columns[key] == target)
                        and not target.generated]

    def misfits(self):
        """Lines that name the values that do not fit."""
        checks = [(there, condition, words) for there, target in self.changed
                  for condition, words in faults(there, target) + null_faults(there, target)]
        lines = []
        for (there, condition, words), count in self.counted(checks, 1):
            row = name(self.row) if self.row else "''"
            found = self.session.rows(f"SELECT {row}, LEFT({text_of(there)}, 40) FROM {self.place} WHERE {condition} "
                                      f"ORDER BY 1 LIMIT {NAMED}")
            lines += [f"{f'{self.row} {number}, ' if self.row else ''}{there.name}: {words} ({value})"
                      for number, value in found]
            lines += more(count)
        return lines

    def empties(self):
        """What is empty in another way than the new columns want, as pairs of an Empty and the count of rows."""
        checks = [(there, empty) for there, target in self.changed for empty in empties(there, target)]
        counts = self.counted([(there, empty.condition, empty) for there, empty in checks], 1)
        return [(there, empty, count) for (there, _, empty), count in counts]

    def doubles(self):
        """Lines that name the rows which a unique key would not let stand together."""
        lines = []
        for key in self.wanted.unique_keys():
            columns = [column.lower() for column in self.wanted.key_columns(key)]
            missing = [column for column in columns
                       if column not in self.now.columns and not self.wanted.columns[column].generated]
            if self.now.keys.get(key) == self.wanted.keys[key] and not self.changed or missing:
                continue
            lines += self.doubles_of(columns)
        return lines

    def doubles_of(self, columns):
        values = [self.compared(column) for column in columns]
        slot = columns[0].endswith("_datetime") and columns[1].endswith("_field")
        who = name(columns[0].split("_")[0] + "_bookername") if slot else "''"
        found = self.session.rows(
            f"SELECT COUNT(*), LEFT(GROUP_CONCAT({who} SEPARATOR ', '), 200), {', '.join(values)} FROM {self.place} "
            f"WHERE {' AND '.join(f'{value} IS NOT NULL' for value in values)} "
            f"GROUP BY {', '.join(str(n + 3) for n in range(len(values)))} HAVING COUNT(*) > 1 ORDER BY 3, {len(values) + 2}")
        return [slot_line(row) if slot else f"{columns[0]} {row[2]}: stands in {row[0]} rows"
                for row in found[:NAMED]] + more(len(found))

    def compared(self, column):
        """A value as the wanted column will compare it."""
        target = self.wanted.columns[column]
        if target.generated:
            return "(" + re.sub(r"`([^`]+)`", lambda found: self.compared(found[1]), target.generated) + ")"
        there = self.now.columns[column]
        if target.kind == "text":
            return f"COALESCE({text_of(there)}, '') COLLATE utf8mb4_bin"
        number = name(there.name) if there.kind in ("whole", "number") else f"TRIM({text_of(there)})"
        return f"COALESCE({number}, 0) + 0"

    def counted(self, checks, condition):
        """Those of the checks that some rows meet, with their number; one look at the table for all of them."""
        if not checks:
            return []
        sums = ", ".join(f"COALESCE(SUM(COALESCE({check[condition]}, FALSE)), 0)" for check in checks)
        counts = [int(count) for count in self.session.rows(f"SELECT {sums} FROM {self.place}")[0]]
        return [(check, count) for check, count in zip(checks, counts) if count]


def slot_line(row):
    bookers = "two bookers" if row[0] == "2" else f"{row[0]} bookers"
    return f"{row[2][:16]}, field {int(float(row[3]))}: {bookers} in one slot ({row[1]})"


def more(count):
    return [f"and {count - NAMED} more of these"] if count > NAMED else []
