# Third-party libraries, all from Debian 12 packages (scripts/install-deps.sh).
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(fmt REQUIRED)
find_package(TBB REQUIRED)
find_package(CURL REQUIRED)
pkg_check_modules(SODIUM REQUIRED IMPORTED_TARGET libsodium)
# The saved state's text: fpzip packs the LUT tables losslessly, zstd the rest.
find_package(fpzip REQUIRED)
pkg_check_modules(ZSTD REQUIRED IMPORTED_TARGET libzstd)
find_path(RAPIDJSON_INCLUDE_DIR rapidjson/document.h REQUIRED)
add_library(rapidjson INTERFACE)
target_include_directories(rapidjson SYSTEM INTERFACE ${RAPIDJSON_INCLUDE_DIR})
# cpp-httplib: Debian ships it as a compiled library with a pkg-config file. The theme
# server of hueloom-theme and the web client's tests use it.
pkg_check_modules(HTTPLIB REQUIRED IMPORTED_TARGET GLOBAL cpp-httplib)

# The editor's toolkit: FLTK 1.3 from its static archive (Debian's is position independent),
# with the X libraries it needs; cairo for anti-aliased drawing and PNG pictures; LittleCMS
# for the monitor's colour profile.
find_library(FLTK_STATIC_LIBRARY NAMES libfltk.a REQUIRED)
find_package(X11 REQUIRED)
pkg_check_modules(XFT REQUIRED IMPORTED_TARGET xft)
pkg_check_modules(FONTCONFIG REQUIRED IMPORTED_TARGET fontconfig)
add_library(fltk_static INTERFACE)
target_link_libraries(fltk_static INTERFACE ${FLTK_STATIC_LIBRARY}
  X11::Xrender X11::Xcursor X11::Xfixes X11::Xext X11::Xinerama PkgConfig::XFT PkgConfig::FONTCONFIG
  X11::X11 Threads::Threads m)
pkg_check_modules(CAIRO REQUIRED IMPORTED_TARGET cairo)
pkg_check_modules(LCMS2 REQUIRED IMPORTED_TARGET lcms2)
