# The third-party libraries, each under one name for `LINKS` lines.
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(fmt REQUIRED)
find_package(nlohmann_json REQUIRED)
find_package(SQLiteCpp REQUIRED)
find_package(CLI11 REQUIRED)
find_package(Qt6 6.4 REQUIRED COMPONENTS Core DBus Widgets Svg)

pkg_check_modules(icu REQUIRED IMPORTED_TARGET icu-uc icu-i18n)
pkg_check_modules(sigcpp REQUIRED IMPORTED_TARGET sigc++-3.0)
pkg_check_modules(sqlite3 REQUIRED IMPORTED_TARGET sqlite3)
pkg_check_modules(xcb REQUIRED IMPORTED_TARGET xcb xcb-record xcb-xinput xcb-screensaver xcb-sync)
