#!/bin/sh
# quarrow: starts the game in the player's own game folder.
#
# The game reads its pictures and sounds from "Resources" under the folder it
# is started in, and keeps the player's ratings there in Resources/Scores.txt.
# The installed files are shared and read-only, so every player gets a folder
# of their own, $XDG_DATA_HOME/quarrow (~/.local/share/quarrow by default),
# whose Resources holds a link to each installed picture and sound beside the
# player's own Scores.txt. Two players on one computer keep their own ratings,
# and an upgrade of the game, which only replaces the installed files, keeps
# them too.
#
# The links are brought up to date at every start: a file the installed game
# has gained gets a link, a link to a file it no longer has is removed, and the
# score file and anything else the player keeps there are never touched. When
# the folder cannot be made or written, the game runs from the installed files
# instead: it plays, but it cannot keep ratings.
#
# The game takes no arguments, and neither does this launcher.
set -u

# This script lives in <prefix>/games; the game and its files are found from
# there, so an unpacked copy of the package runs as well as an installed one.
self=$(readlink -f -- "$0") || self=$0
prefix=$(dirname -- "$(dirname -- "$self")")
game="$prefix/lib/games/quarrow/quarrow"
installed="$prefix/share/games/quarrow"

# An XDG_DATA_HOME that is unset, empty or relative stands for the default.
case "${XDG_DATA_HOME:-}" in
/*) folder="$XDG_DATA_HOME/quarrow" ;;
*) folder="${HOME:+$HOME/.local/share/quarrow}" ;;
esac

# Makes the player's Resources match the installed one; fails when the folder
# cannot be made or written.
refresh() {
    [ -n "$folder" ] || return 1
    mkdir -p -- "$folder/Resources" 2>/dev/null || return 1
    [ -w "$folder/Resources" ] || return 1
    for file in "$installed/Resources"/*; do
        [ -e "$file" ] || continue # an empty or missing installed folder
        name=${file##*/}
        link="$folder/Resources/$name"
        [ "$name" = Scores.txt ] && continue
        # -ef (the same file) is not POSIX, but Debian's sh (dash) has it.
        # shellcheck disable=SC3013
        [ -L "$link" ] && [ "$link" -ef "$file" ] && continue
        # A file of the player's own under an installed name stays.
        if [ -L "$link" ] || [ ! -e "$link" ]; then
            ln -sfn -- "$file" "$link" 2>/dev/null || return 1
        fi
    done
    for link in "$folder/Resources"/*; do
        if [ -L "$link" ] && [ ! -e "$link" ]; then rm -f -- "$link"; fi
    done
    return 0
}

if refresh; then
    cd -- "$folder" || exit 1
else
    echo "quarrow: cannot write the game folder ${folder:-(no HOME)}; playing without keeping ratings" >&2
    cd -- "$installed" || exit 1
fi
exec "$game"
