#include "host/edits/content_lines.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace plenzo {

namespace {

std::string fileText(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string whyRefused(const std::string& text) {
    std::string whyNot;
    const auto content = ContentText::fromText(text, whyNot);
    EXPECT_EQ(content.has_value(), whyNot.empty());
    return whyNot;
}

std::string writtenBack(const std::string& text) {
    std::string whyNot;
    const auto content = ContentText::fromText(text, whyNot);
    EXPECT_EQ(whyNot, "");
    return content ? content->text() : std::string();
}

std::string calendar(const std::string& lines) {
    return "BEGIN:VCALENDAR\r\n" + lines + "END:VCALENDAR\r\n";
}

} // namespace

TEST(AContentText, IsWrittenBackByteForByte) {
    int files = 0;
    for (const char* folder : {PLENZO_TEST_DATA "/calendars", PLENZO_TEST_DATA "/../../samples"}) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().extension() != ".ics") {
                continue;
            }
            const std::string text = fileText(entry.path());
            EXPECT_EQ(writtenBack(text), text) << entry.path();
            ++files;
        }
    }
    EXPECT_GE(files, 8);
    for (const std::string& text :
         {std::string(), std::string("\r\n\n"), std::string("\xEF\xBB\xBF") + calendar(""),
          calendar("begin:vevent\r\nSum\r\n mary;X=\"a:b\":\tx\r\n\r\nend:VEVENT \r\n"),
          std::string("BEGIN:VCALENDAR\nX-ODD\n:no name\nX:1\r\nEND:VCALENDAR"),
          calendar("BEGIN:X-BOX\r\nBEGIN:VALARM\r\nEND:VALARM\r\nEND:X-BOX\r\n") + calendar("")}) {
        EXPECT_EQ(writtenBack(text), text);
    }
}

TEST(AContentText, IsRefusedWhereItsShapeIsInDoubt) {
    std::string deep;
    for (int level = 0; level < 100'000; ++level) {
        deep += "BEGIN:X-BOX\n";
    }
    const std::pair<std::string, const char*> rows[] = {
        {"BEGIN:VCALENDAR\nBEGIN:VEVENT\nEND:VCALENDAR\n", "line 3: END:VCALENDAR without"},
        {"BEGIN:VCALENDAR\nBEGIN:VEVENT\n", "line 2: VEVENT does not end"},
        {"END:VCALENDAR\n", "line 1: END:VCALENDAR without"},
        {calendar("BEGIN:VEVENT\nBEGIN:VTODO\nEND:VTODO\nEND:VEVENT\n"), "line 3: BEGIN:VTODO in"},
        {calendar(calendar("")), "line 2: BEGIN:VCALENDAR in"},
        {calendar(std::string("X:\0\n", 4)), "line 2: a NUL byte"},
        {"X:1\n" + calendar(""), "line 1: a property outside"},
        {calendar("X:" + std::string(17U << 20U, 'x') + "\n"), "line 2: a line of more"},
        {deep, "line 17: BEGIN:X-BOX in"}};
    for (const auto& [text, reason] : rows) {
        EXPECT_THAT(whyRefused(text), testing::StartsWith(reason));
    }
}

TEST(AContentLine, ReadsItsPartsThroughFoldsQuotesAndEscapes) {
    const ContentLine line("sum\r\n mary;X-A=\"a;b:c\";LANG\n\tUAGE=de: a\\, b\\nc\\;d \r\n");
    EXPECT_EQ(line.name(), "SUMMARY");
    EXPECT_EQ(line.parameter("X-A"), "a;b:c");
    EXPECT_EQ(line.parameter("LANGUAGE"), "de");
    EXPECT_EQ(line.parameter("TZID"), "");
    EXPECT_EQ(line.value(), "a\\, b\\nc\\;d");
    EXPECT_EQ(line.text(), "a, b\nc;d");
    const ContentLine odd("X-ODD\n");
    EXPECT_EQ(odd.name() + odd.value() + odd.parameters(), "");
}

TEST(ANewLine, IsFoldedAt75OctetsBetweenCharacters) {
    for (std::size_t before = 0; before < 80; ++before) {
        std::string content(before, 'x');
        for (int count = 0; count < 40; ++count) {
            content += "ü🚮";
        }
        const std::string folded = foldedLine(content, "\r\n");
        EXPECT_EQ(ContentLine(folded).content(), content);
        std::size_t begin = 0;
        while (begin < folded.size()) {
            const std::size_t end = folded.find("\r\n", begin);
            EXPECT_LE(end - begin, 75U);
            const auto first = static_cast<unsigned char>(folded[begin + (begin > 0 ? 1 : 0)]);
            EXPECT_NE(first & 0xC0U, 0x80U);
            begin = end + 2;
        }
    }
    const std::string noText(500, '\x80');
    EXPECT_EQ(ContentLine(foldedLine(noText, "\n")).content(), noText);
    EXPECT_EQ(foldedLine("", "\n"), "\n");
}

TEST(AnEdit, ChangesOnlyTheLinesItNames) {
    std::string whyNot;
    const auto content = ContentText::fromText(
        calendar("BEGIN:VEVENT\r\nx-Odd:  1\r\nSTATUS:A\r\nUID:\r\n  e\r\nstatus:B\r\n"
                 "BEGIN:VALARM\r\nEND:VALARM\r\nEND:VEVENT\r\n"),
        whyNot);
    ASSERT_TRUE(content) << whyNot;
    ContentComponent& event = *content->components()[0]->components()[0];
    event.setProperty("STATUS", "STATUS:C", "\r\n");
    event.setProperty("COMMENT", "COMMENT:new", "\r\n");
    event.removeProperties("X-NONE");
    EXPECT_EQ(content->text(),
              calendar("BEGIN:VEVENT\r\nx-Odd:  1\r\nSTATUS:C\r\nUID:\r\n  e\r\n"
                       "COMMENT:new\r\nBEGIN:VALARM\r\nEND:VALARM\r\nEND:VEVENT\r\n"));
    event.remove(*event.components("VALARM")[0]);
    event.removeProperties("X-ODD");
    EXPECT_EQ(event.text(), "BEGIN:VEVENT\r\nSTATUS:C\r\nUID:\r\n  e\r\nCOMMENT:new\r\n"
                            "END:VEVENT\r\n");
}

} // namespace plenzo
