# The installed Python module finds the installed library and splits a file; its types are there too.
#   PYTHON  the interpreter
#   SITE    the folder of modules below the prefix
include(${CMAKE_CURRENT_LIST_DIR}/installed_tree.cmake)

make_scratch_folder(installed_python folder)
file(WRITE ${folder}/split.py
  "#!${PYTHON}\nimport sys, velkstep\n"
  "for file in velkstep.split(*sys.argv[1:3], **velkstep.CLASSIC): print(file)\n")
file(CHMOD ${folder}/split.py PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
set(ENV{PYTHONPATH} ${PREFIX}/${SITE})
set(ENV{PYTHONDONTWRITEBYTECODE} 1)
expect_that_it_splits(${folder}/split.py ${folder})

file(GLOB files RELATIVE ${PREFIX}/${SITE}/velkstep ${PREFIX}/${SITE}/velkstep/*)
list(FILTER files EXCLUDE REGEX "^_velkstep\\..*\\.so$")
if(NOT files STREQUAL "__init__.py;_advice.py;_functions.py;_velkstep.pyi;errors.py;py.typed;shapes.py")
  message(FATAL_ERROR "Installed Python files: ${files}")
endif()
