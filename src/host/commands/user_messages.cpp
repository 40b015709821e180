#include "host/commands/user_messages.h"

#include <iostream>

namespace plenzo {

void UserMessages::note(const std::string& problem) const {
    std::cerr << "plenzohost: " << problem << '\n';
}

void UserMessages::tell(const std::string& what, const std::string& why) const {
    note(what + ": " + why);
    m_notify({what, why});
}

} // namespace plenzo
