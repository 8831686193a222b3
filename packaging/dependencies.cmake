# Read by cpack: the libraries of the program and its player are needed; those of FFmpeg's module, without which fewer
# kinds of files play, are recommended.
file(WRITE ${CPACK_KOVA_BINARIES}/debian/control "Source: kova-alarm\n\nPackage: kova-alarm\nArchitecture: any\n")
execute_process(
    COMMAND dpkg-shlibdeps -O -ekova-alarm -ekova-alarm-player -dRecommends -ekova-alarm-ffmpeg.so
    WORKING_DIRECTORY ${CPACK_KOVA_BINARIES} OUTPUT_VARIABLE libraries COMMAND_ERROR_IS_FATAL ANY)
foreach(field Depends Recommends)
    string(TOUPPER CPACK_DEBIAN_PACKAGE_${field} variable)
    string(REGEX MATCH "${field}=[^\n]+" found "${libraries}")
    string(REPLACE "${field}=" "" found "${found}")
    string(PREPEND ${variable} "${found}, ")
endforeach()
