# Decides whether to build documents with the calls that the XML library's own parser uses. Their headers are
# internal but installed. If they are missing or have changed, we use the public calls, which build the same
# documents more slowly.

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
    message(STATUS "The XML library's internal headers are missing or have changed; using the slower public calls")
  endif()
endif()

option(ORVO_FAST_DOM "Build documents with the internal calls of the XML library" ${ORVO_HAS_INTERNAL_DOM})
