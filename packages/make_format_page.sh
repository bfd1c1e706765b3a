#!/bin/sh
# make_format_page.sh VERSION DATE: docs/web-file-format.md from standard input becomes the man page
# quorvane.qvx(5) on standard output.
set -eu

# Sections take the place of the document's title. What lowdown marks as code is bold: terminals have
# no font for it.
sed -e '1s/.*/# NAME\n\nquorvane.qvx - a web of notes in a file of plain text\n\n# DESCRIPTION\n/' \
    -e 's/^## \(.*\)/# \U\1/' -e 's/^### /## /' |
    lowdown -s -Tman --parse-no-metadata -M title=QUORVANE.QVX -M section=5 -M "date=$2" \
        -M "source=Quorvane $1" -M volume="File Formats" |
    sed -e "1s/.*/'\\\\\" t/" -e 's/\\fC/\\fB/g' -e 's/ expand allbox/ allbox/' \
        -e 's/\*\*\*\*\*\*/&\\:/g' -e '/^\.TH /a .ad l' \
        -e '/^NAME$/,/^\.SH/s/^quorvane.qvx - /quorvane.qvx \\- /' |
    sed -z -e 's/\n\.S\([HS]\)\n\([^\n]*\)\(\n\.LP\)\?/\n.S\1 \2/g'
printf '%s\n' '.SH "SEE ALSO"' '.BR qvx (1),' '.BR quorvane (1)'
