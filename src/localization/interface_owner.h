#pragma once

#include <string>

namespace plenzo {

/// What the owner of an interface file, or a widget that is loaded from one, may take part in.
class InterfaceOwner {
public:
    InterfaceOwner() = default;
    InterfaceOwner(const InterfaceOwner&) = delete;
    InterfaceOwner& operator=(const InterfaceOwner&) = delete;
    virtual ~InterfaceOwner() = default;

    /// The name by which the string tables are found of an interface that has no file name; empty
    /// for none.
    [[nodiscard]] virtual std::string nibNameForLocalizedNib() const { return {}; }

    /// The interface of this name has been translated. A loaded widget is told whenever there was a
    /// dictionary, the owner whenever the language is not English.
    virtual void awakeFromNibAfterLocalization(const std::string& /*name*/) {}
};

} // namespace plenzo
