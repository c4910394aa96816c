# Where an installation keeps the scanners, which only other programs start. The library looks in "bin" below
# the directory that the file zuk.ini names, hence the last step.
include(GNUInstallDirs)
set(ZUK_INSTALL_HOME ${CMAKE_INSTALL_LIBEXECDIR}/zuk)
set(ZUK_INSTALL_SCANNERS ${ZUK_INSTALL_HOME}/bin)
