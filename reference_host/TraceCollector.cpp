#include "reference_host/TraceCollector.h"

#include <iostream>
#include <string_view>
#include <utility>

namespace refhost {

using kelcore::trace::kReaderCategory;
using kelcore::trace::kWriterCategory;

TraceCollector::TraceCollector(std::vector<std::string>& lines)
    : readerWasEnabled_(kelcore::trace::IsEnabled(kReaderCategory)),
      writerWasEnabled_(kelcore::trace::IsEnabled(kWriterCategory)) {
    formerOutput_ =
        kelcore::trace::SetOutput([&lines](std::string_view category, std::string_view text) {
            if (category == kReaderCategory || category == kWriterCategory) {
                lines.emplace_back(text);
            } else {
                std::cerr << category << ": " << text << '\n';
            }
        });
    kelcore::trace::SetEnabled(kReaderCategory, true);
    kelcore::trace::SetEnabled(kWriterCategory, true);
}

TraceCollector::~TraceCollector() {
    kelcore::trace::SetOutput({});  // needs no memory; from here on no line may reach `lines`
    try {
        kelcore::trace::SetOutput(std::move(formerOutput_));
        kelcore::trace::SetEnabled(kReaderCategory, readerWasEnabled_);
        kelcore::trace::SetEnabled(kWriterCategory, writerWasEnabled_);
    } catch (...) {
        // Memory ran out: lines go to standard error, or a category stays on.
    }
}

}  // namespace refhost
