# Reads the table of docs/architecture.md and then "FILE:#include LINE" lines, and complains about
# every include that goes to a folder or library which the row of the file's folder does not name.

function complain(text) {
    print text
    failed = 1
}

function exists(path,  line, answer) {
    answer = (getline line < path) >= 0
    close(path)
    return answer
}

# The row of the table that a file belongs to: the longest folder that it lies in.
function folderOf(file,  folder, longest) {
    longest = ""
    for (folder in knows) {
        if (index(file, folder) == 1 && length(folder) > length(longest)) {
            longest = folder
        }
    }
    return longest
}

# The file of ours that an include means, or nothing. A header that is found nowhere is generated.
function ownFile(file, name, quoted,  directory, i, count, roots) {
    directory = file
    sub(/[^\/]*$/, "", directory)
    count = split(quoted ? directory " . include tests fmi_import/include" : "include", roots, " ")
    for (i = 1; i <= count; ++i) {
        if (exists(roots[i] "/" name)) {
            return (roots[i] == "." ? "" : roots[i] "/") name
        }
    }
    return quoted ? directory name : ""
}

# The library from elsewhere that a header belongs to; nothing for the standard's own.
function libraryOf(name) {
    if (name !~ /[.\/]/ || name ~ /^(assert|errno|math|std(arg|def|int|io|lib)|string)\.h$/) return ""
    if (name ~ /^fmilib\.h$/) return "FMI Library"
    if (name ~ /^pugixml\.hpp$/) return "pugixml"
    if (name ~ /^minizip\//) return "minizip"
    if (name ~ /^zlib\.h$/) return "zlib"
    if (name ~ /^expat\.h$/) return "expat"
    if (name ~ /^CLI\//) return "CLI11"
    if (name ~ /^nlohmann\//) return "nlohmann_json"
    if (name ~ /^(gtest|gmock)\//) return "GoogleTest"
    if (name ~ /^benchmark\//) return "Google Benchmark"
    return "the operating system"
}

function check(file, name, quoted,  from, to) {
    from = folderOf(file)
    if (from == "") {
        complain(file " is in no folder of the table in docs/architecture.md")
        return
    }
    used[from] = 1
    to = ownFile(file, name, quoted)
    to = to == "" ? libraryOf(name) : folderOf(to)
    if (to != "" && to != from && !((from, to) in known) && !((from, "everything") in known)) {
        complain(file " includes " name ", but " from " does not know " to \
                 " by the table in docs/architecture.md")
    }
}

# A row: | `folder/` | what it does | `known/`, known library |
FNR == NR && /^\| `[^`]*\/` \|/ {
    split($0, cells, "|")
    gsub(/[` ]/, "", cells[2])
    gsub(/`|^ +| +$/, "", cells[4])
    count = split(cells[4], names, /, /)
    for (i = 1; i <= count; ++i) {
        if (names[i] ~ /\/$/ && !(names[i] in knows)) {
            complain(cells[2] " may only know folders above it in the table, not " names[i])
        }
        known[cells[2], names[i]] = 1
    }
    knows[cells[2]] = 1
}

FNR != NR {
    file = $0
    sub(/:.*/, "", file)
    name = $0
    sub(/^[^<"]*[<"]/, "", name)
    sub(/[>"].*$/, "", name)
    check(file, name, $0 ~ /include *"/)
    ++includes
}

END {
    for (folder in knows) {
        if (!(folder in used)) {
            complain("the table in docs/architecture.md names " folder ", where no source is")
        }
    }
    if (!includes) {
        complain("there is nothing to check")
    }
    exit failed
}
