# Sourced first by the other scripts: they work at the top of the tree, wherever they are called from,
# and answer --help before they do anything else.
# shellcheck shell=bash
unset CDPATH
script=$(realpath -- "$0")
tree=$(dirname -- "$(dirname -- "$script")")
caller=$PWD
cd -- "$tree" || exit

# The comment at the top of the script.
usage() {
  sed -n '2,/^[^#]/{/^[^#]/d;s/^# \{0,1\}//p}' "$script"
}

case "${1:-}" in
  -h | --help) usage; exit ;;
esac

# Ends with a complaint about how the script was called.
refuse() {
  printf '%s: %s; --help tells more\n' "${script##*/}" "$1" >&2
  exit 2
}

# allow "--OPTION..." ARGUMENT...: refuses an option that is none of these, before any work is done.
allow() {
  local known=" $1 " argument
  shift
  for argument; do
    [[ $argument != -* || $known == *" ${argument%%=*} "* ]] || refuse "there is no option $argument"
  done
}

# An argument's or a variable's path, seen from where the script was called.
from_caller() {
  case $1 in
    /*) printf '%s\n' "$1" ;;
    *) printf '%s\n' "$caller/$1" ;;
  esac
}

# Also in another user's checkout, as when a container mounts one.
git() {
  command git -c safe.directory="$tree" "$@"
}

# configure PRESET: in silence unless that fails. CMake forgets what else the preset says when it finds
# that the tree was configured with another compiler.
configure() {
  local log=build/configure-$1.log
  mkdir -p build
  cmake --preset "$1" >"$log" 2>&1 || { cat "$log"; exit 1; }
  ! grep -q 'require your cache to be deleted' "$log" || configure "$1"
}

# build PRESET [TARGET...]: configures and builds.
build() {
  configure "$1"
  cmake --build --preset "$1" ${2:+--target "${@:2}"}
}
