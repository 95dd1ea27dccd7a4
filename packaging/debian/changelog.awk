# CHANGELOG.md as a Debian changelog, its items wrapped anew. A release's time is its day's beginning.
function print_item(   words, count, line, i) {
    count = split(item, words, " ")
    if (count == 0)
        return
    line = "  *"
    for (i = 1; i <= count; ++i) {
        if (length(line) + 1 + length(words[i]) > 78) {
            print line
            line = "   "
        }
        line = line " " words[i]
    }
    print line
    item = ""
}
function close_release() {
    print_item()
    if (version != "")
        printf "\n -- The Tidewell developers <developers@tidewell.example>  %s\n\n", date
}
/^## / {
    close_release()
    version = $2
    ("LC_ALL=C date --utc --rfc-email --date=" $4) | getline date
    printf "tidewell (%s) unstable; urgency=medium\n\n", version
}
version != "" && /^- / { print_item(); item = substr($0, 3) }
version != "" && /^  [^ ]/ { item = item $0 }
END { close_release() }
