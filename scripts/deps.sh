#!/usr/bin/env bash
# Installs the Debian packages the build needs, only when one is missing.
set -euo pipefail
packages=(qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite libqt6svg6 qt6-qpa-plugins wamerican cmake ninja-build g++)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
    echo "Installing: ${missing[*]}"
    sudo_cmd=()
    [ "$(id -u)" -eq 0 ] || sudo_cmd=(sudo)
    "${sudo_cmd[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq "${missing[@]}"
fi
