#include "host/edits/component_text.h"
#include "quick/quick_entry_table.h"

#include <iostream>

/// Writes one calendar with the component of every entry of the table; its UID is the entry's line.
int main() {
    std::cout << "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//test\r\n";
    for (const plenzo::QuickEntryRow& row : plenzo::quickEntryTable()) {
        std::cout << plenzo::componentText(
            plenzo::readQuickEntry(row.text, row.context),
            {std::to_string(row.line), row.context.now, row.zoneName});
    }
    std::cout << "END:VCALENDAR\r\n";
    return 0;
}
