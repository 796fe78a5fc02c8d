# SPDX-FileCopyrightText: 2026 Kestle contributors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# To be sourced by a bash script that has re-executed itself through lab_enclose: a card on a loop
# device, seen through a UDisks2 of its own on a system bus of its own. Nothing of it shows outside,
# and nothing of the machine's own cards or programs shows inside.
#
#   lab_enclose "$@"        starts the script again in namespaces of its own; exits 77 where the lab
#                           cannot be set up, with the reason. A script that needs only the card, no
#                           desktop, names the commands it needs in $lab_commands beforehand.
#   lab_start               buses and udisksd; sets $lab, a folder for everything
#   lab_insert FOLDER [LABEL]
#                           an exFAT card holding FOLDER's content, mounted: sets $lab_device,
#                           $lab_mount and $lab_label
#   lab_eject               takes it out again
#   lab_insert_again        puts the same card in again, as it is by now
#   lab_put_aside NAME      leaves the card as it is, so that another can be inserted
#   lab_take_up NAME        makes it the current card again
#   lab_pull                takes the card away while it is in use
#   lab_stop_udisks, lab_start_udisks
#   lab_display             a display with a window manager: sets DISPLAY
#   lab_wait SECONDS CMD…   short polls until CMD succeeds; fails after SECONDS
#   lab_start_program CMD…  in the background, its output in $lab/program.log; sets $lab_program
# Everything is taken down when the script ends.

lab_skip() {
    echo "$*"
    exit 77
}

lab_enclose() {
    [[ -z ${KESTLE_CARD_LAB:-} ]] || return 0
    ((EUID == 0)) || lab_skip "needs root for loop devices and mounts"
    local command
    for command in losetup mkfs.exfat mount.exfat-fuse unshare ${lab_commands-udisksctl dbus-daemon \
        udevadm gdbus Xvfb openbox xdotool import convert jq /usr/libexec/udisks2/udisksd}; do
        command -v "$command" >/dev/null || lab_skip "$command is not installed"
    done
    [[ -c /dev/fuse ]] || lab_skip "FUSE is not available"
    timeout 5 losetup -f >/dev/null 2>&1 || lab_skip "loop devices are not available"
    timeout 5 unshare -m -p -f --mount-proc true 2>/dev/null || lab_skip "namespaces are not available"
    KESTLE_CARD_LAB=$(mktemp -d --tmpdir kestle-lab.XXXXXX)
    export KESTLE_CARD_LAB
    local status=0
    # Whatever happens inside, even a SIGKILL: its processes and mounts end with it.
    unshare -m -p -f --kill-child=KILL --mount-proc -- "$0" "$@" || status=$?
    rm -rf --one-file-system -- "$KESTLE_CARD_LAB"
    exit "$status"
}

lab_wait() {
    local tries=$(($1 * 20))
    shift
    until "$@"; do
        ((--tries > 0)) || return 1
        sleep 0.05
    done
}

lab_fail() {
    echo "FAILED: $*" >&2
    local log
    for log in "$lab"/*.log; do
        [[ ! -s $log ]] || { echo "--- ${log##*/}" >&2; tail -n 15 "$log" >&2; }
    done
    exit 1
}

lab_pids=()
lab_image=card.img # its name in $lab
lab_device=
lab_mount=
lab_mounted=no
lab_udisks=-1 # place in lab_pids
declare -A lab_aside=()

lab_stop() {
    local i
    # In reverse: the program first, so that it does not see its card go; udisksd takes the card out
    # before it ends itself.
    for ((i = ${#lab_pids[@]} - 1; i >= 0; --i)); do
        ((i != lab_udisks)) || lab_eject_all
        kill "${lab_pids[i]}" 2>/dev/null || continue
        lab_wait 3 lab_ended "${lab_pids[i]}" || kill -KILL "${lab_pids[i]}" 2>/dev/null || true
    done
}

lab_eject_all() {
    local name
    lab_eject
    for name in "${!lab_aside[@]}"; do
        lab_take_up "$name"
        lab_eject
    done
}

lab_put_aside() {
    lab_aside[$1]="$lab_image|$lab_device|$lab_mount|$lab_mounted|$lab_label"
    lab_image=$1.next.img
    lab_device='' lab_mount='' lab_mounted=no
}

lab_take_up() {
    IFS='|' read -r lab_image lab_device lab_mount lab_mounted lab_label <<<"${lab_aside[$1]}"
    unset "lab_aside[$1]"
}

lab_ended() { ! kill -0 "$1" 2>/dev/null; }

lab_start() {
    lab=$KESTLE_CARD_LAB
    trap lab_stop EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
    mkdir -p "$lab"/{data,config,cache,runtime}
    chmod 700 "$lab/runtime"
    export XDG_DATA_HOME=$lab/data XDG_CONFIG_HOME=$lab/config XDG_CACHE_HOME=$lab/cache
    export XDG_RUNTIME_DIR=$lab/runtime LC_ALL=C.UTF-8 LANGUAGE=
    mount --make-rprivate /
    # Another lab's udisksd would clean up after cards that it does not see mounted.
    local folder
    for folder in /run/udisks2 /var/lib/udisks2 /media; do
        mkdir -p "$folder"
        mount -t tmpfs lab "$folder"
    done

    # Replies must be allowed too, or every caller waits for its time-out.
    cat >"$lab/system.conf" <<CONF
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <listen>unix:path=$lab/system-bus</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/><allow own="*"/><allow send_destination="*"/><allow receive_sender="*"/>
  </policy>
</busconfig>
CONF
    dbus-daemon --config-file="$lab/system.conf" --nofork >"$lab/system-bus.log" 2>&1 &
    lab_pids+=($!)
    dbus-daemon --session --nofork --address="unix:path=$lab/session-bus" >"$lab/session-bus.log" 2>&1 &
    lab_pids+=($!)
    lab_wait 5 test -S "$lab/system-bus" || lab_fail "no system bus"
    lab_wait 5 test -S "$lab/session-bus" || lab_fail "no session bus"
    export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$lab/system-bus
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$lab/session-bus

    # A socket alone proves nothing: its udevd may be long gone. Ours keeps its notes to itself.
    if ! timeout 3 udevadm control --ping >/dev/null 2>&1; then
        mkdir -p /run/udev
        mount -t tmpfs udev-notes /run/udev
        /lib/systemd/systemd-udevd >"$lab/udevd.log" 2>&1 &
        lab_pids+=($!)
        lab_wait 5 lab_udev_answers || lab_fail "systemd-udevd does not start"
    fi
    # The kernel knows exFAT, or mount(8) must find the FUSE program under the name it looks for.
    if ! grep -qw exfat /proc/filesystems && [[ ! -e /sbin/mount.exfat ]]; then
        ln -sf mount.exfat-fuse /sbin/mount.exfat
    fi
    lab_start_udisks
}

lab_start_udisks() {
    /usr/libexec/udisks2/udisksd >>"$lab/udisksd.log" 2>&1 &
    lab_pids+=($!)
    lab_udisks=$((${#lab_pids[@]} - 1))
    lab_wait 10 lab_udisks_answers || lab_fail "udisksd does not answer"
}

lab_stop_udisks() {
    kill "${lab_pids[lab_udisks]}"
    lab_wait 5 lab_ended "${lab_pids[lab_udisks]}" || lab_fail "udisksd does not end"
}

lab_udev_answers() { timeout 3 udevadm control --ping >/dev/null 2>&1; }

lab_udisks_answers() {
    timeout 3 gdbus introspect --system --dest org.freedesktop.UDisks2 \
        --object-path /org/freedesktop/UDisks2/Manager >/dev/null 2>&1
}

# lab_property INTERFACE NAME of the card's block device
lab_property() {
    timeout 3 gdbus call --system --dest org.freedesktop.UDisks2 \
        --object-path "/org/freedesktop/UDisks2/block_devices/${lab_device##*/}" \
        --method org.freedesktop.DBus.Properties.Get "org.freedesktop.UDisks2.$1" "$2" 2>/dev/null
}

lab_label_seen() { [[ $(lab_property Block IdLabel) == *"'$lab_label'"* ]]; }

# The notice of a new content is sometimes lost right after attaching: it is given again.
lab_announce() {
    udevadm trigger --action=change "$lab_device"
    udevadm settle --timeout=3 || true
    lab_wait 1 lab_label_seen
}

lab_insert() {
    local folder=$1 size
    # Mount points are shared by all of the machine: the name must be this run's own.
    lab_label=${2:-KLAB$(printf '%05d' $((RANDOM + $$ % 1000 * 30)))}
    size=$(du -sm -- "$folder" | cut -f1)
    truncate -s $((size * 2 + 24))M "$lab/$lab_image"
    mkfs.exfat -L "$lab_label" "$lab/$lab_image" >"$lab/mkfs.log" 2>&1 || lab_fail "no exFAT file system"

    mkdir -p "$lab/filling"
    lab_device=$(timeout 10 losetup --find --show "$lab/$lab_image") || lab_fail "no loop device"
    mount.exfat-fuse "$lab_device" "$lab/filling" >"$lab/filling.log" 2>&1 || lab_fail "no first mount"
    cp -r -- "$folder/." "$lab/filling/"
    sync -f "$lab/filling"
    lab_wait 5 umount "$lab/filling" 2>/dev/null || lab_fail "the card stays in use"
    lab_mount_card
}

lab_insert_again() {
    lab_device=$(timeout 10 losetup --find --show "$lab/$lab_image") || lab_fail "no loop device"
    lab_mount_card
}

lab_mount_card() {
    local answer
    lab_wait 1 lab_announce || lab_fail "udisksd does not see the card"
    lab_mounted=maybe # before it is: a signal in between must not lose the mount
    answer=$(timeout 20 udisksctl mount -b "$lab_device" --no-user-interaction 2>&1) ||
        lab_fail "the card does not mount: $answer"
    lab_mount=$(findmnt -n -f -o TARGET --source "$lab_device") || lab_fail "no mount point: $answer"
    lab_mounted=yes
    # From here on the device goes away by itself when it is unmounted.
    losetup -d "$lab_device" 2>/dev/null || true
}

lab_pull() {
    umount -l "$lab_mount" || lab_fail "the card does not go"
    lab_mounted=no
}

lab_eject() {
    [[ -n $lab_device ]] || return 0
    if [[ $lab_mounted != no ]]; then
        timeout 10 udisksctl unmount -b "$lab_device" --no-user-interaction >/dev/null 2>&1 ||
            umount "$lab_device" 2>/dev/null || umount -l "$lab_device" 2>/dev/null || true
    fi
    lab_mounted=no
    losetup -d "$lab_device" 2>/dev/null || true
    lab_device=
}

lab_display() {
    Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$lab/display" >"$lab/xvfb.log" 2>&1 &
    lab_pids+=($!)
    lab_wait 10 test -s "$lab/display" || lab_fail "Xvfb does not start"
    DISPLAY=:$(<"$lab/display")
    export DISPLAY
    unset WAYLAND_DISPLAY QT_QPA_PLATFORM
    openbox >"$lab/openbox.log" 2>&1 &
    lab_pids+=($!)
}

lab_start_program() {
    "$@" >"$lab/program.log" 2>&1 &
    lab_program=$!
    lab_pids+=("$lab_program")
}
