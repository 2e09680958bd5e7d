# For scripts that work in a minimal Debian 12 of their own, made in a temporary folder from the mirror that this machine's
# own apt uses: sourced, it gives "bare_root", which calls the script again, inside, where all mounts and processes live
# in namespaces of their own. The script has defined "inside". Needs root, debootstrap, git.

sName="$(basename "$sSelf")"
sSuite=bookworm
sFolder=""
iInside=""
sOutcome="FAILED: interrupted"

# Ends with one line that says why.
fail() {
    sOutcome="FAILED: $*"
    exit 1
}

finish() {
    trap '' INT TERM HUP
    # The first process inside goes with this one, all others and the mounts with the first one.
    if [[ -n "$iInside" ]]; then kill -KILL "$iInside" 2>/dev/null || true; wait "$iInside" 2>/dev/null || true; fi
    # Until the last of them has let go of the folder.
    if [[ -n "$sFolder" ]]; then
        for ((i = 0; i < 100; ++i)); do
            if rm -rf --one-file-system "$sFolder" 2>/dev/null; then break; fi
            sleep 0.1
        done
        [[ ! -e "$sFolder" ]] || echo "$sName: could not be removed: $sFolder" >&2
    fi
    echo "$sName: $sOutcome"
}

# The sources of Debian 12 that this machine has, as lines of a sources.list.
own_sources() {
    apt-get indextargets --format 'deb $(REPO_URI) $(CODENAME) $(COMPONENT)' 'Created-By: Packages' 'Origin: Debian' |
        grep -E "^deb https?://[^ ]+ $sSuite(-updates|-security)? main$" | sort -u
}

# What apt needs to know on its way to the mirror: proxies and checks, keys, passwords, names of hosts.
copy_apt_settings() {
    local sRoot="$1"
    apt-config dump | grep -E '^Acquire::(https?|Check-[A-Za-z-]+)(::| )' | grep -vi 'proxy-\?auto-\?detect' \
        > "$sRoot/etc/apt/apt.conf.d/90this-machine" || true
    for sFile in trusted.gpg trusted.gpg.d keyrings auth.conf auth.conf.d; do
        if [[ -e "/etc/apt/$sFile" ]]; then cp -r "/etc/apt/$sFile" "$sRoot/etc/apt/"; fi
    done
    cp /etc/hosts "$sRoot/etc/hosts"
}

make_root() {
    local sRoot="$1" sMirror sProxy="" sInclude=""
    sMirror="$(sed -n "s/^deb \([^ ]*\) $sSuite main$/\1/p" "$sFolder/sources.list" | head -n 1)"
    eval "$(apt-config shell sProxy Acquire::http::Proxy)"
    if [[ -n "$sProxy" && "$sProxy" != DIRECT ]]; then export http_proxy="$sProxy"; fi
    if grep -q '^deb https' "$sFolder/sources.list"; then sInclude="--include=ca-certificates"; fi
    echo "== Debian $sSuite from $sMirror"
    if ! debootstrap --variant=minbase $sInclude "$sSuite" "$sRoot" "$sMirror" > "$sFolder/debootstrap.log" 2>&1; then
        tail -n 5 "$sFolder/debootstrap.log"
        fail "debootstrap made no $sSuite, see above"
    fi
    cp "$sFolder/sources.list" "$sRoot/etc/apt/sources.list"
    copy_apt_settings "$sRoot"
    printf '#!/bin/sh\nexit 101\n' > "$sRoot/usr/sbin/policy-rc.d"  # no services in there
    chmod 755 "$sRoot/usr/sbin/policy-rc.d"
}

mount_root() {
    local sRoot="$1"
    mount -t proc proc "$sRoot/proc"
    mount -t sysfs -o ro sysfs "$sRoot/sys"
    # Numbers of pseudo-terminals of its own, too.
    mount -t devpts -o newinstance,ptmxmode=0666,mode=620,gid=5 devpts "$sRoot/dev/pts"
    ln -sf pts/ptmx "$sRoot/dev/ptmx"
    mkdir -p "$sRoot/dev/shm"
    mount -t tmpfs -o mode=1777 tmpfs "$sRoot/dev/shm"
}

# in_root ROOT FOLDER COMMAND...: runs a command in that folder of it as a first login would: with nothing set but the way to
# the mirror.
in_root() {
    local sRoot="$1" sIn="$2"
    shift 2
    local aEnvironment=(HOME=/root USER=root LOGNAME=root PATH=/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin)
    for sVariable in http_proxy https_proxy no_proxy; do
        if [[ -n "${!sVariable-}" ]]; then aEnvironment+=("$sVariable=${!sVariable}"); fi
    done
    chroot "$sRoot" /usr/bin/env -i --default-signal=INT,QUIT -C "$sIn" "${aEnvironment[@]}" "$@"
}

# bare_root OPTION: all that is mounted and started inside ends with the process that runs there: it is the first of a
# namespace of its own.
bare_root() {
    if [[ "${1-}" == --inside ]]; then
        sFolder="$2"
        trap 'echo "$sOutcome" > "$sFolder/outcome"' EXIT
        sOutcome="FAILED: the bare machine could not be made, see above"
        inside "${3-}"
        exit
    fi
    trap finish EXIT
    trap 'exit 130' INT TERM HUP
    [[ $(id -u) -eq 0 ]] || fail "only root can make a bare machine"
    for sTool in debootstrap git unshare; do
        command -v "$sTool" > /dev/null || fail "$sTool is not installed"
    done
    sFolder="$(mktemp -d --tmpdir tidewatch-bare.XXXXXX)" || fail "no temporary folder"
    own_sources > "$sFolder/sources.list" || true
    grep -q " $sSuite main$" "$sFolder/sources.list" ||
        fail "this machine's apt knows no mirror of $sSuite; if its sources name one, run \"apt-get update\" first"
    mkdir "$sFolder/tree" "$sFolder/root"
    git archive HEAD | tar -x -C "$sFolder/tree" || fail "the last commit could not be copied, see above"
    echo "== Commit $(git log -1 --format='%h %s')"

    # In the background, so that an interruption is heeded at once.
    unshare --mount --pid --fork --kill-child --mount-proc --propagation private \
        "$sSelf" --inside "$sFolder" "${1-}" &
    iInside=$!
    local iCode=0
    wait "$iInside" || iCode=$?
    iInside=""
    sOutcome="$(cat "$sFolder/outcome" 2>/dev/null || echo "FAILED: ended with exit code $iCode, see above")"
    exit "$iCode"
}
