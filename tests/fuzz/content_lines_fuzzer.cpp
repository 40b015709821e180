// Reads whatever bytes come as an iCalendar text. What is not refused must come back byte for byte;
// edits must leave a text that is read again, and keep every line that they do not name.

#include "host/edits/calendar_edits.h"
#include "host/edits/content_lines.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using namespace plenzo;

void require(bool isTrue) {
    if (!isTrue) {
        std::abort();
    }
}

/// They belong to the beginnings of files, even joined ones, and not to what is copied from there.
std::string withoutByteOrderMarks(std::string text) {
    const std::string mark = "\xEF\xBB\xBF";
    for (std::size_t place = text.find(mark); place != std::string::npos; place = text.find(mark)) {
        text.erase(place, mark.size());
    }
    return text;
}

void editAll(ContentComponent& component, const std::string& lineEnding) {
    component.setProperty("X-FUZZ", "X-FUZZ:1", lineEnding);
    require(component.property("X-FUZZ") != nullptr);
    component.removeProperties("X-FUZZ");
    require(withoutByteOrderMarks(component.copy()->text()) ==
            withoutByteOrderMarks(component.text()));
    for (ContentComponent* part : component.components()) {
        editAll(*part, lineEnding);
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::string whyNot;
    const auto content = ContentText::fromText(text, whyNot);
    require(content.has_value() == whyNot.empty());
    require(ContentLine(foldedLine("X:" + ContentLine(text).value(), "\r\n")).name() == "X");
    const std::string uid = "BEGIN:VTODO\nUID:fuzz-fuzz-fuzz\nEND:VTODO\n";
    const EditResult added = addComponent(text, uid);
    if (!content) {
        require(!added.error.empty() || text.find_first_not_of(" \t\r\n") == std::string::npos);
        return 0;
    }
    require(content->text() == text);
    if (added.error.empty()) {
        require(ContentText::fromText(added.text, whyNot).has_value());
    }
    for (ContentComponent* component : content->components()) {
        editAll(*component, content->lineEnding());
    }
    return 0;
}
