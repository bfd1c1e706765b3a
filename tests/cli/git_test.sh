#!/bin/bash
# git_test.sh QVX DOCUMENT: sets git up as the document's first code blocks say, in a folder of its
# own, and lets it show, merge and refuse to merge webs.
set -euo pipefail
qvx=$1 document=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# The user's own configuration is out of the way, and qvx is found by its name.
export HOME=$folder GIT_CONFIG_NOSYSTEM=1 GIT_PAGER=cat LC_ALL=C
export GIT_AUTHOR_NAME=a GIT_AUTHOR_EMAIL=a@b GIT_COMMITTER_NAME=a GIT_COMMITTER_EMAIL=a@b
export PATH=$(dirname "$qvx"):$PATH
unset XDG_CONFIG_HOME GIT_DIR GIT_WORK_TREE GIT_INDEX_FILE

fail() {
    echo "failed: $*" >&2
    exit 1
}

# block LANGUAGE: the lines of the document's first block of that language.
block() {
    awk -v open="\`\`\`$1" '$0 == open { on = 1; next } /^```/ && on { exit } on' "$document"
}

has() { # has TEXT PART: prints what is missing
    case $1 in *"$2"*) ;; *) fail "\"$2\" is not in: $1" ;; esac
}

mkdir "$folder/notes"
cd "$folder/notes"
git init -q -b main .
block gitattributes >.gitattributes
block sh >"$folder/setup.sh"
[ -s .gitattributes ] && [ -s "$folder/setup.sh" ] || fail "the document has no setup"
bash -eu "$folder/setup.sh"

qvx new 'my notes.qvx'
qvx set 'my notes.qvx' list --text $'milk\nbread\neggs'
qvx set 'my notes.qvx' plan --text $'one\ntwo'
git add . && git commit -qm base
git branch other

# One changes a line and adds a cell, the other changes another line and deletes a cell.
qvx set 'my notes.qvx' list --text $'oat milk\nbread\neggs'
qvx set 'my notes.qvx' 'new cell' --text 'fresh'
shown=$(git diff)
has "$shown" $'-milk\n+oat milk'
has "$shown" '+=== new cell'
has "$shown" '=== home'
case $shown in *'<text>'* | *Binary*) fail "git diff does not show texts: $shown" ;; esac
git commit -qam ours
git checkout -q other
qvx set 'my notes.qvx' list --text $'milk\nbread\nsix eggs'
qvx rm 'my notes.qvx' plan
git commit -qam theirs
git checkout -q main
git merge -q -m merged other || fail "a merge without a conflict is refused"
[ "$(qvx list 'my notes.qvx')" = $'home\nlist\nnew cell' ] || fail "cells are missing"
[ "$(qvx show 'my notes.qvx' list)" = $'oat milk\nbread\nsix eggs' ] || fail "lines are missing"
[ -z "$(git status --porcelain)" ] || fail "git is not done"

# Both change one line; beside it, all is merged.
git branch -f other
qvx set 'my notes.qvx' list --text $'goat milk\nbread\nsix eggs'
qvx set 'my notes.qvx' home --text 'ours'
git commit -qam ours
git checkout -q other
qvx set 'my notes.qvx' list --text $'soy milk\nbread\nsix eggs'
qvx set 'my notes.qvx' 'new cell' --text 'theirs'
git commit -qam theirs
git checkout -q main
if said=$(git merge other 2>&1); then fail "a conflict is merged: $said"; fi
has "$said" 'CONFLICT'
has "$said" 'qvx: my notes.qvx: list: conflict in line 1 of the text'
[ "$(qvx show 'my notes.qvx' list)" = $'<<<<<<< ours\ngoat milk\n=======\nsoy milk\n>>>>>>> theirs\nbread\nsix eggs' ] ||
    fail "the conflict is not marked: $(qvx show 'my notes.qvx' list)"
[ "$(qvx show 'my notes.qvx' home)$(qvx show 'my notes.qvx' 'new cell')" = ourstheirs ] ||
    fail "the rest is not merged"
has "$(git status --porcelain)" 'UU "my notes.qvx"'
qvx set 'my notes.qvx' list --text $'all milk\nbread\nsix eggs'
git commit -qam resolved
[ "$(git show :'my notes.qvx' | qvx show - list | head -n 1)" = 'all milk' ] || fail "no commit"
echo done
