# The Debian packages that the project needs, by purpose. Read by the commands of the project.
build_packages=(g++ cmake ninja-build pkg-config libgtk2.0-dev libgtkglext1-dev libglew-dev libgl1-mesa-dev)
run_packages=(libgl1-mesa-dri adwaita-icon-theme librsvg2-common)
test_packages=(libgtest-dev libgmock-dev libx11-dev zlib1g-dev xvfb openbox xdotool libgl1-mesa-dri adwaita-icon-theme
    locales assimp-utils)
format_packages=(clang-format)
