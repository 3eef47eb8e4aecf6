# The floors of src: an include goes downwards only.

# From the lowest upwards; subjects of one line stand side by side and do not include each other. What stands in src
# itself is above them all.
readonly floors_of_src='look
app
plan records
booking
counter reports
options
schedule reportserver'

# Prints every include that goes up, aside, or out of src, and fails when there is one.
floors() {
    # A window's .ui file names the headers of its own widgets.
    {
        grep -rnE --include='*.h' --include='*.cpp' '^[[:space:]]*#[[:space:]]*include[[:space:]]*["<]' "$project/src"
        grep -rn --include='*.ui' '<header' "$project/src" | sed -E 's/<header[^>]*>([^<]*)<.*/#include "\1"/'
    } |
        awk -v floors="$floors_of_src" -v src="$project/src/" '
            BEGIN {
                for (line = split(floors, lines, "\n"); line > 0; --line)
                    for (n = split(lines[line], names, " "); n > 0; --n)
                        level[names[n]] = line
                top = 100
            }
            {
                file = substr($0, length(src) + 1)
                from = file ~ /^[^:]*\// ? substr(file, 1, index(file, "/") - 1) : ""
                target = file
                sub(/^[^"<]*["<]/, "", target)
                sub(/[">].*/, "", target)
                to = target ~ /\// ? substr(target, 1, index(target, "/") - 1) : ""
                quoted = file ~ /include[[:space:]]*"/
                if ((quoted && to == "" && target ~ /^ui_|\.moc$/) || (!quoted && !(to in level)))
                    next
                ++seen
                here = from == "" ? top : level[from]
                there = to == "" ? top : level[to]
                if (!here || !there || there > here || (there == here && from != to)) {
                    print "not downwards: src/" file
                    failed = 1
                }
            }
            END { exit failed || !seen }' >&2
}
