# The program's version for the programs' --version: one number, the
# project's, given to the code through a generated header.
set(QM_GENERATED_DIR ${CMAKE_BINARY_DIR}/generated)
configure_file(${CMAKE_CURRENT_LIST_DIR}/program_version.h.in
  ${QM_GENERATED_DIR}/program_version.h @ONLY)
add_library(qm_version INTERFACE)
target_include_directories(qm_version INTERFACE ${QM_GENERATED_DIR})
