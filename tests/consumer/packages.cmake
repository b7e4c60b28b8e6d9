# The Debian packages of ${SHARED}, installed by dpkg under a root of their own and used from there.
# That root has no C library and no cache of libraries: dependencies are not demanded of it, and
# ldconfig, which the package calls, is left out.

set(root ${WORK}/root)
set(scripts ${WORK}/root-scripts)
file(MAKE_DIRECTORY ${root}/var/lib/dpkg/updates ${root}/var/lib/dpkg/info ${scripts})
file(TOUCH ${root}/var/lib/dpkg/status)
file(WRITE ${scripts}/ldconfig "#!/bin/sh\n")
file(CHMOD ${scripts}/ldconfig PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

run(cpack -G DEB --config ${SHARED}/CPackConfig.cmake -B ${WORK}/packages)
file(GLOB packages ${WORK}/packages/libvela1_*.deb ${WORK}/packages/libvela-dev_*.deb)
run(${CMAKE_COMMAND} -E env PATH=${scripts}:/usr/sbin:/sbin:$ENV{PATH} LC_ALL=C
    dpkg --root=${root} --force-not-root --force-script-chrootless --force-depends
    --log=${WORK}/dpkg.log --install ${packages})

build_and_run_project(find_package ${WORK}/find_package-packages -D CMAKE_PREFIX_PATH=${root}/usr)
build_and_run_command(g++ ${root}/usr "")
