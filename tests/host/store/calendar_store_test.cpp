#include "calendar_fixture.h"
#include "host/agent_push.h"
#include "host/records/event_delta.h"
#include "host/store/agent_events.h"
#include "host/store/calendar_store.h"
#include "host/store/path_watch.h"
#include "propertylist/known_keys.h"
#include "store/random_calendars.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <fstream>
#include <map>
#include <set>

namespace plenzo {

namespace {

std::string uidOf(const Value& record) {
    return std::string(record.dictionary()->stringForKey(keys::uid).value_or(""));
}

std::string event(const std::string& uid) {
    return "BEGIN:VEVENT\nUID:" + uid + "\nDTSTART:20260310T100000Z\nEND:VEVENT\n";
}

/// What the agent makes of what it is told.
class ToldAgent {
public:
    void tell(const Array& delta) {
        for (const Value& record : delta) {
            if (record.dictionary()->contains(keys::del)) {
                m_records.erase(uidOf(record));
            } else {
                m_records[uidOf(record)].append(record);
            }
        }
    }

    bool knowsJust(const Array& events) const {
        ToldAgent fresh;
        fresh.tell(events);
        return fresh.m_records == m_records;
    }

private:
    std::map<std::string, Array> m_records;
};

/// Calendars that are kept up with, as the host does it.
class AStoreOfCalendars : public testing::Test {
protected:
    void keepUp(const std::vector<CalendarSource>& sources, const ExpansionWindow& window) {
        PathChanges changes = m_watch.readChanges();
        if (changes.isAnything || !(sources == m_sources)) {
            m_sources = sources;
            watch();
        }
        m_store.setSources(sources);
        m_store.update(changes);
        const RecordChanges records = m_events.update(m_store.calendars(), window);
        const auto& problems = m_store.calendars().problems;
        m_told.insert(problems.begin(), problems.end());
        m_told.insert(records.problems.begin(), records.problems.end());
        m_agent.tell(eventDelta(records.before, records.after));
    }

    void expectWhatAFreshLoadGives(const ExpansionWindow& window) {
        CalendarStore fresh;
        AgentEvents events;
        fresh.setSources(m_sources);
        fresh.update({});
        const auto problems = events.update(fresh.calendars(), window).problems;
        ASSERT_EQ(m_events.all(), events.all());
        ASSERT_TRUE(m_agent.knowsJust(events.all()));
        ASSERT_EQ(sourceListOf(m_store.calendars().calendars),
                  sourceListOf(fresh.calendars().calendars));
        ASSERT_THAT(fresh.calendars().problems, testing::Each(testing::AnyOfArray(m_told)));
        ASSERT_THAT(problems, testing::Each(testing::AnyOfArray(m_told)));
        m_mostRecords = std::max(m_mostRecords, events.all().size());
    }

    std::vector<CalendarSource> sourcesOf(RandomCalendars& calendars) {
        const std::string folder = m_folder.path().string();
        CalendarSource dressed{{folder}, "Mine", {}, calendars.below(2) == 0};
        if (calendars.below(2) == 0) {
            dressed.color = 0x00FF00;
        }
        switch (calendars.below(5)) {
        case 0:
            return {dressed};
        case 1:
            return {{{folder + "/file1.ics"}, "One", {}, false}, dressed};
        case 2:
            return {{{folder + "/folder1", folder + "/file2.ics", folder}, {}, {}, false}};
        case 3:
            return {{{folder + "/folder2/"}, "Two", 0xFF, true}, {{folder}, {}, {}, false}};
        default:
            return {{{folder}, {}, {}, false}};
        }
    }

    void watch() {
        for (const CalendarSource& source : m_sources) {
            m_watch.watch(source.paths);
        }
    }

    TemporaryFolder m_folder;
    PathWatch m_watch;
    std::vector<CalendarSource> m_sources;
    CalendarStore m_store;
    AgentEvents m_events;
    ToldAgent m_agent;
    std::set<std::string> m_told;
    std::size_t m_mostRecords = 0;
};

class ARandomStoreOfCalendars : public AStoreOfCalendars,
                                public testing::WithParamInterface<unsigned> {};

} // namespace

TEST_P(ARandomStoreOfCalendars, AlwaysHoldsWhatAFreshLoadGives) {
    RandomCalendars calendars(m_folder.path(), GetParam());
    auto sources = sourcesOf(calendars);
    for (int step = 0; step < 120; ++step) {
        const int count = 1 + calendars.below(3);
        for (int change = 0; change < count; ++change) {
            calendars.change();
        }
        if (calendars.below(12) == 0) {
            sources = sourcesOf(calendars);
        }
        const ExpansionWindow window = windowFrom(
            step < 60 ? "2026-03-10T08:00:00Z" : "2026-03-11T08:00:00Z", step < 100 ? 20 : 30);
        keepUp(sources, window);
        ASSERT_NO_FATAL_FAILURE(expectWhatAFreshLoadGives(window)) << "step " << step;
    }
    EXPECT_GT(m_mostRecords, 50U);
}

TEST_F(AStoreOfCalendars, HoldsAtOnceWhatTheProgramItselfHasWritten) {
    const auto write = [&](const std::string& name, const std::string& text) {
        std::ofstream(m_folder.file(name)) << text;
        return m_folder.file(name);
    };
    const auto itemCounts = [&] {
        std::vector<std::size_t> counts;
        for (const Calendar& calendar : m_store.calendars().calendars) {
            counts.push_back(itemsOf(calendar).size());
        }
        return counts;
    };
    write("a.ics", fileAround("NAME:A\n" + event("1")));
    const std::string second = write("b.ics", fileAround("NAME:B\n" + event("2")));
    m_store.setSources({{{m_folder.path()}, {}, {}, false}});
    m_store.update({});
    write("b.ics", fileAround("NAME:B\n" + event("2") + event("3")));
    EXPECT_THAT(itemCounts(), testing::ElementsAre(1, 1));
    m_store.noteWritten(second);
    EXPECT_THAT(itemCounts(), testing::ElementsAre(1, 2));
    m_store.noteWritten(write("c.ics", "no calendar"));
    EXPECT_THAT(m_store.calendars().problems, testing::IsEmpty());
    m_store.update({});
    EXPECT_THAT(m_store.calendars().problems, testing::SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(Seeds, ARandomStoreOfCalendars, testing::Range(1U, 9U));

} // namespace plenzo
