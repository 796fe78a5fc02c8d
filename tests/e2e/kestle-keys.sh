# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# To be sourced beside card-lab.sh: keys for Kestle from outside, and looks at its screen.

key() { xdotool key --delay 60 "$@"; }
screen() { import -silent -window root -depth 8 rgb:- | sha256sum; }

# Waits until the screen differs from the one before and has come to rest.
last_screen=
settle() {
    local now before='' rest=0 tries=200
    while ((tries-- > 0)); do
        lab_ended "$lab_program" && lab_fail "Kestle ended early, before: $1"
        now=$(screen)
        if [[ $now == "$before" && $now != "$last_screen" ]]; then
            ((++rest < 3)) || break
        else
            rest=0
        fi
        before=$now
        sleep 0.08
    done
    ((rest >= 3)) || lab_fail "the screen does not come to: $1"
    last_screen=$now
}

checksums() { (cd "$1" && find . -type f -print0 | sort -z | xargs -0 sha256sum); }

window_shown() { [[ -n $(xdotool search --onlyvisible --pid "$lab_program" 2>/dev/null) ]]; }
# A window comes black; with its texts there are shades of grey.
window_drawn() { (($(import -silent -window root -format '%k' info:-) > 8)); }

# In the middle of the screen there is more than signs on black.
picture_shown() {
    local shades
    shades=$(import -silent -window root png:- |
        convert - -gravity center -crop 300x200+0-60 +repage -format '%k' info:-)
    ((shades > 1000))
}

# The green check mark of a deletion without failures, in the middle of the screen.
green_check() {
    local share
    share=$(import -silent -window root png:- |
        convert - -gravity center -crop 360x360+0+0 +repage -fuzz 2% \
            -fill white -opaque '#30D158' -fill black +opaque white -format '%[fx:mean]' info:-)
    awk -v share="$share" 'BEGIN { exit !(share > 0.004) }'
}
