# shellcheck shell=sh
# What the scripts that build for Windows share. They run in the folder of the sources, after packaging/common.sh.

triple=x86_64-w64-mingw32
toolchain=$PWD/cmake/toolchains/windows.cmake

# Prints the packages whose version decides which code is generated.
compiler_packages() {
  printf '%s\n' g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix mingw-w64-x86-64-dev binutils-mingw-w64-x86-64 \
    libz-mingw-w64-dev qt6-base-dev-tools
}

# Prints a number for the kit that this recipe makes with the installed compiler.
kit_number() {
  {
    cat "$toolchain" packaging/windows/recipe.sh
    # shellcheck disable=SC2046,SC2016 # word splitting is intended; fields of dpkg-query
    dpkg-query --show --showformat='${Package} ${Version}\n' $(compiler_packages)
  } | sha256sum | cut -c 1-16
}

# Prints the folder of the kit, which exists only if the kit is complete.
kit_folder() {
  printf '%s/windows-kit-%s\n' "${ZOMREL_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/zomrel}" "$(kit_number)"
}

# make_setup VERSION FOLDER FILE: makes the installer of the folder's files. The uninstaller removes these files, and
# nothing else.
make_setup() {
  (
    cd "$2"
    find . -type f -printf '%P\n' | sort | sed 's|/|\\|g; s|.*|Delete "$INSTDIR\\&"|'
    find . -mindepth 1 -type d -printf '%P\n' | sort -r | sed 's|/|\\|g; s|.*|RMDir "$INSTDIR\\&"|'
  ) >"$2-files.nsh"
  makensis -V2 -WX -INPUTCHARSET UTF8 "-DVERSION=$1" "-DSTAGE=$2" "-DINSTALLED=$2-files.nsh" \
    "-DICON=$PWD/build/windows/zomrel.ico" "-DTASK=$PWD/packaging/windows/backup-task.nsh" \
    "-DACCESS=$PWD/packaging/windows/access.nsh" "-DOUT=$3" packaging/windows/setup.nsi
}
