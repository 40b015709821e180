#include "host/ical/calendar.h"

namespace plenzo {

std::vector<FiledItem> itemsOf(const Calendar& calendar) {
    std::vector<FiledItem> items;
    for (const CalendarFilePointer& file : calendar.files) {
        for (const CalendarItem& item : file->items) {
            items.push_back({file.get(), &item});
        }
    }
    return items;
}

} // namespace plenzo
