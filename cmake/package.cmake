# SPDX-License-Identifier: MIT
# `cpack -G DEB` in the build folder makes a Debian package of what is installed (scripts/package.sh).
# The same sources give the same bytes: the times in it are that of the last commit.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME dastrel)
set(CPACK_PACKAGE_CONTACT "Dastrel authors <authors@dastrel.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "scatters clones of a mesh over a surface")
set(CPACK_PACKAGE_DESCRIPTION
"Takes a model and a ground in LWO2 object files and puts clones of the
model onto the ground: at random places kept apart by a spacing rule, with
random sizes and rotations, aligned with the surface, steered by weight
maps. Comes with headers and examples for writing modules and hosts.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# Not those that the one who builds it happens to give.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DASTREL_SOURCE_FOLDER ${PROJECT_SOURCE_DIR})
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/package_time.cmake)
include(CPack)

# Debian asks for a changelog; ours is the repository's.
find_program(DASTREL_GZIP gzip)
if(DASTREL_GZIP)
    include(cmake/package_time.cmake)
    string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
    file(WRITE ${PROJECT_BINARY_DIR}/cmake/changelog
"dastrel (${PROJECT_VERSION}) unstable; urgency=medium

  * Version ${PROJECT_VERSION}. The repository tells its changes.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
    execute_process(COMMAND ${DASTREL_GZIP} -9nf ${PROJECT_BINARY_DIR}/cmake/changelog)
    install(FILES ${PROJECT_BINARY_DIR}/cmake/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/dastrel)
endif()
