#!/usr/bin/env bash
# Installs what is missing of tools/packages.txt. When nothing is missing it does nothing and needs neither
# network nor root.
set -euo pipefail
list="$(dirname "${BASH_SOURCE[0]}")/packages.txt"

if ! command -v dpkg-query >/dev/null; then
  echo "This is no Debian system: install the counterparts of the packages in $list yourself." >&2
  exit 1
fi

missing=()
while read -r package; do
  status="$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)"
  [[ "$status" == installed ]] || missing+=("$package")
done < <(sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' "$list")
[[ ${#missing[@]} -gt 0 ]] || exit 0
by_hand="apt-get update && apt-get install --no-install-recommends ${missing[*]}"

as_root=()
if [[ "$(id -u)" -ne 0 ]]; then
  if ! command -v sudo >/dev/null; then
    printf '%s\n' "These packages are missing, and only root can install them. Run as root:" "  $by_hand" >&2
    exit 1
  fi
  as_root=(sudo)
fi

# Not everybody who finds sudo may use it, and a network can be away: then too it is said what is missing.
trap 'printf "%s\n" "Packages are missing and could not be installed. Run as root:" "  $by_hand" >&2' ERR

echo "Installing from Debian: ${missing[*]}"
# Through env, because sudo drops the variable.
"${as_root[@]}" apt-get --quiet update
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get --quiet --yes install --no-install-recommends "${missing[@]}"
