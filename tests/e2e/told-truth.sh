# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# To be sourced by a bash script that lets delete-from-card loose on a card it breaks: compares what
# was said of the files, in FOLDER/NAME.said, with what the medium holds, in FOLDER/NAME.left.
#
#   truth_begin FOLDER
#   truth_case NAME              what holds for every case: each file once, nothing told as deleted or
#                                as not found that is on the medium, nothing gone that was to be kept
#   truth_deleted COUNT          of the last case: so many files were deleted
#   truth_said FILE WORDS        "deleted", or the reason
#   truth_every_failure REASON
#   truth_end                    exits 1 if anything did not hold

truth_folder=
truth_name=
truth_failures=0

truth_begin() { truth_folder=$1; }

truth_wrong() {
    echo "$truth_name: $*" >&2
    sed 's/^/    said: /' "$truth_folder/$truth_name.said" >&2
    sed 's/^/    left: /' "$truth_folder/$truth_name.left" >&2
    truth_failures=$((truth_failures + 1))
}

truth_case() {
    truth_name=$1
    local said=$truth_folder/$1.said left=$truth_folder/$1.left file
    if [[ ! -s $said || ! -e $left ]]; then
        touch "$said" "$left"
        truth_wrong "was not tried"
        return
    fi
    ! grep -vq '^deleted	\|^failed	' "$said" || truth_wrong "ended badly"
    [[ -z $(cut -f 2 "$said" | sort | uniq -d) ]] || truth_wrong "a file was told of twice"
    while IFS=$'\t' read -r outcome file reason; do
        if [[ $outcome == deleted || $reason == 'file not found' ]] && grep -qxF "$file" "$left"; then
            truth_wrong "$file is on the medium"
        fi
    done <"$said"
    for file in DCIM/100TEST/KEPT.JPG DCIM/101TEST/KEPT.JPG; do
        cut -f 2 "$said" | grep -qxF "$file" || grep -qxF "$file" "$left" ||
            truth_wrong "$file is gone"
    done
}

truth_deleted() {
    local count
    count=$(grep -c '^deleted' "$truth_folder/$truth_name.said" || true)
    [[ $count == "$1" ]] || truth_wrong "$count files were deleted, not $1"
}

truth_said() {
    local said
    said=$(awk -F '\t' -v file="$1" '$2 == file { print $1 == "deleted" ? $1 : $3 }' \
        "$truth_folder/$truth_name.said")
    [[ $said == "$2" ]] || truth_wrong "of $1 was said “$said”, not “$2”"
}

truth_every_failure() {
    local other
    other=$(awk -F '\t' -v reason="$1" '$1 == "failed" && $3 != reason { print $2 }' \
        "$truth_folder/$truth_name.said")
    [[ -z $other ]] || truth_wrong "another reason than “$1” was given for: $other"
}

truth_end() {
    ((truth_failures == 0)) || exit 1
    echo "$(find "$truth_folder" -name '*.said' | wc -l) broken cards, and the truth of each."
}
