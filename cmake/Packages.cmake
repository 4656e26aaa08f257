find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
pkg_check_modules(CAIRO REQUIRED IMPORTED_TARGET cairo)
pkg_check_modules(PANGO REQUIRED IMPORTED_TARGET pangocairo pangoft2 fontconfig)
pkg_check_modules(PNG REQUIRED IMPORTED_TARGET libpng)
pkg_check_modules(XML REQUIRED IMPORTED_TARGET libxml-2.0)
pkg_check_modules(ZLIB REQUIRED IMPORTED_TARGET zlib)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb xcb-shape xcb-xfixes xcb-shm xcb-render xcb-renderutil xcb-xinput
                  xcb-xkb xcb-randr xcb-cursor xcb-icccm xkbcommon xkbcommon-x11)
