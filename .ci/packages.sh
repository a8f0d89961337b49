# Sourced by demo.sh and test.sh: installs what this Debian machine lacks, and says so.

# need PACKAGE... : each is installed unless dpkg has it.
need() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      echo "Missing packages: ${missing[*]}. Install them, or run this as root." >&2
      return 1
    }
    as_root=(sudo)
  fi
  echo "Installing missing packages: ${missing[*]}"
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "${missing[@]}" >/dev/null
}
