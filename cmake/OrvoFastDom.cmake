# Whether documents are built by the calls of the XML library's own parser, which are in headers that a
# program should not use but that are installed beside the others. Without them, or where they are not as
# they were, the public calls are used; the documents are the same.

if(NOT DEFINED ORVO_HAS_INTERNAL_DOM)
  file(WRITE ${PROJECT_BINARY_DIR}/fast-dom/Main.cpp "int main() {}\n")
  try_compile(ORVO_HAS_INTERNAL_DOM ${PROJECT_BINARY_DIR}/fast-dom
    SOURCES
      ${PROJECT_BINARY_DIR}/fast-dom/Main.cpp
      ${PROJECT_SOURCE_DIR}/plugin/xml/DocumentNodesInternal.cpp
      ${PROJECT_SOURCE_DIR}/plugin/xml/DocumentNodesPublic.cpp
    CMAKE_FLAGS -DINCLUDE_DIRECTORIES=${PROJECT_SOURCE_DIR}
    COMPILE_DEFINITIONS -DORVO_FAST_DOM=1
    LINK_LIBRARIES XercesC::XercesC
    CXX_STANDARD 20
    CXX_STANDARD_REQUIRED ON)
  if(NOT ORVO_HAS_INTERNAL_DOM)
    message(STATUS "The XML library's internal headers are not as known: documents take longer to build")
  endif()
endif()

option(ORVO_FAST_DOM "Build documents with the internal calls of the XML library" ${ORVO_HAS_INTERNAL_DOM})
