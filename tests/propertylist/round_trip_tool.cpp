// Reads each binary property list named on the command line and writes it anew to the name with
// ".again" behind it. Prints the names of those that it could not read or write, and fails then.

#include "propertylist/binary_property_list.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <string>

namespace {

std::string contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool writeAgain(const std::string& path) {
    const std::string contents = contentsOf(path);
    const auto value = plenzo::readBinaryPropertyList(std::as_bytes(std::span(contents)));
    if (!value)
        return false;
    const auto bytes = plenzo::writeBinaryPropertyList(*value);
    std::ofstream file(path + ".again", std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    return !bytes.empty() && file.good();
}

} // namespace

int main(int argumentCount, char** arguments) {
    int failures = 0;
    for (int number = 1; number < argumentCount; ++number) {
        if (writeAgain(arguments[number]))
            continue;
        std::cerr << arguments[number] << '\n';
        ++failures;
    }
    return failures == 0 ? 0 : 1;
}
