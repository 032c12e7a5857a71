#!/bin/sh
# recipe.sh FUNCTION: builds one library of the kit. It runs in the folder of the source package and installs into the
# folder $kit; $work is the folder of the whole build, $jobs the number of compilers at a time, and $flags makes the
# result independent of the folder. After an interruption it goes on where it stopped.
set -eu

# Prints the source packages in the order in which they are built, each with its function. SQLite is built as a part of
# Qt.
list() {
  cat <<LIST
openssl build_openssl
postgresql-15 build_libpq
coinutils build_coin
coinor-osi build_coin
clp build_coin
coinor-cgl build_coin
coinor-cbc build_coin
zint build_zint
libxlsxwriter build_xlsxwriter
sqlite3 build_sqlite
qt6-base build_qt
LIST
}
if [ "$1" = list ]; then
  list
  exit
fi
: "${triple:?}" "${toolchain:?}" "${work:?}" "${kit:?}" "${jobs:?}" "${flags:?}"

# The folder in which OpenSSL looks for its settings. Only administrators can write there, so that nobody else can make
# the program load a library.
openssl_folder=C:/Windows/OpenSSL

build_openssl() {
  [ -e configdata.pm ] || ./Configure mingw64 --cross-compile-prefix=$triple- --prefix=$openssl_folder --libdir=lib \
    --openssldir=$openssl_folder shared no-tests no-engine no-legacy no-dso no-autoload-config \
    -Wl,--no-insert-timestamp
  make -j"$jobs" build_libs
  cp lib*.dll "$kit/bin"
  cp lib*.dll.a "$kit/lib"
  cp -r include/openssl "$kit/include"
}

build_libpq() {
  [ -e config.status ] || ./configure --host=$triple --prefix=/kit --with-ssl=openssl --without-readline \
    --without-zlib --without-icu --without-zstd --without-lz4 CC=$triple-gcc-posix CXX=$triple-g++-posix \
    CFLAGS="-O2 $flags" CPPFLAGS="-I$kit/include" LDFLAGS="-L$kit/lib -L$kit/bin -Wl,--no-insert-timestamp"
  make -j"$jobs" -C src/interfaces/libpq
  make -C src/interfaces/libpq install DESTDIR="$work/libpq"
  make -C src/include install DESTDIR="$work/libpq"
  cp "$work"/libpq/kit/lib/libpq.dll "$kit/bin"
  cp "$work"/libpq/kit/lib/libpq.a "$kit/lib/libpq.dll.a"
  cp "$work"/libpq/kit/include/*.h "$kit/include"
}

# cmake_install SOURCE [OPTION...]: configures, builds and installs a library with the toolchain file.
cmake_install() {
  source=$1
  shift
  cmake -G Ninja -S "$source" -B build-windows -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DZOMREL_WINDOWS_KIT="$kit" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/kit -DCMAKE_C_FLAGS="$flags $c_flags" \
    -DCMAKE_CXX_FLAGS="$flags" -DCMAKE_SHARED_LINKER_FLAGS=-Wl,--no-insert-timestamp \
    -DCMAKE_MODULE_LINKER_FLAGS=-Wl,--no-insert-timestamp "$@"
  cmake --build build-windows --parallel "$jobs"
  rm -rf "$work/installed"
  DESTDIR=$work/installed cmake --install build-windows
  cp -r "$work"/installed/kit/. "$kit"
}

# Makes the file of SQLite's whole source that Qt builds into its driver. A store that is open may be renamed, as on
# other systems, so that a restore can keep its lock on the store while it puts the new file in place.
build_sqlite() {
  [ -e config.status ] || ./configure --disable-readline --disable-tcl
  make sqlite3.c
  shared='dwShareMode = FILE_SHARE_READ | FILE_SHARE_WRITE'
  sed -i "s/$shared;/$shared | FILE_SHARE_DELETE;/" sqlite3.c
  grep -q "$shared | FILE_SHARE_DELETE;" sqlite3.c
}

# Qt with its own copies of the smaller libraries. PCRE2 compiles no machine code: its memory for that is freed by the
# run-time library of GCC before the destructors that use it run, so every thread would crash at its end.
build_qt() {
  # Debian's source package of Qt lacks the copy of SQLite.
  mkdir -p src/3rdparty/sqlite
  cp --update "$work"/sources/sqlite3/sqlite3.[ch] src/3rdparty/sqlite
  set --
  # Only the tests use the network module, for local sockets.
  for feature in direct2d1_1 tabletevent opengl vulkan vkgen dbus ssl dtls openssl schannel icu concurrent xml \
    pkg_config headersclean androiddeployqt qmake windeployqt glib zstd fontconfig system_zlib system_pcre2 \
    system_png system_jpeg system_freetype system_harfbuzz system_doubleconversion system_libb2 system_sqlite \
    sql_odbc sql_mysql sql_psql sql_oci sql_db2 sql_ibase; do
    set -- "$@" "-DFEATURE_$feature=OFF"
  done
  for feature in testlib sql sql_sqlite printsupport direct2d; do
    set -- "$@" "-DFEATURE_$feature=ON"
  done
  c_flags=-DPCRE2_DISABLE_JIT
  cmake_install . -DQT_QMAKE_TARGET_MKSPEC=win32-g++ -DBUILD_SHARED_LIBS=ON -DQT_BUILD_EXAMPLES=OFF \
    -DQT_BUILD_TESTS=OFF -DINPUT_opengl=no "$@"
}

# build_coin: one of the libraries of the optimizer. Each finds the ones before it through pkg-config.
build_coin() {
  export PKG_CONFIG_LIBDIR="$kit/lib/pkgconfig" PKG_CONFIG_PATH=''
  [ -e config.status ] || ./configure --host=$triple --prefix="$kit" \
    --disable-shared --enable-static --without-lapack --without-blas --disable-zlib --disable-bzlib \
    CC=$triple-gcc-posix CXX=$triple-g++-posix F77=unavailable ADD_CFLAGS="$flags" ADD_CXXFLAGS="$flags"
  make -j"$jobs"
  make install
}

build_zint() {
  cmake_install . -DZINT_STATIC=ON -DZINT_USE_PNG=OFF -DZINT_USE_QT=OFF
  # Only the static library is used.
  rm -f "$kit"/bin/*zint* "$kit"/lib/libzint.dll.a
  mv "$kit"/lib/libzint-static.a "$kit"/lib/libzint.a
}

build_xlsxwriter() {
  library=/usr/$triple/lib/libz.a
  cmake_install . -DBUILD_SHARED_LIBS=OFF -DZLIB_LIBRARY=$library -DZLIB_INCLUDE_DIR=/usr/$triple/include
  cp $library "$kit/lib"
  cat >"$kit/lib/pkgconfig/xlsxwriter.pc" <<PC
prefix=\${pcfiledir}/../..
Name: libxlsxwriter
Description: Writes Excel workbooks
Version: 1.1.4
Cflags: -I\${prefix}/include
Libs: -L\${prefix}/lib -lxlsxwriter -lz
PC
}

c_flags=
"$1"
