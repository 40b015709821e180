#pragma once

#include "localization/interface_owner.h"
#include "localization/interface_tables.h"

#include <QWidget>
#include <memory>
#include <string>
#include <vector>

class QIODevice;

namespace plenzo {

class InterfaceBuilder;

/// Loads interface files: "RESOURCES/NAME.ui", each with one top-level widget, designed in English.
/// Its texts are translated by the tables "LANGUAGE.lproj/NAME.strings", controls and windows grow
/// and shrink with them, and what is read from right to left is mirrored.
///
/// Dynamic properties say what a view does: "autoresizingMask" what of its frame is flexible
/// (springs_and_struts.h), "tag" 99 that it keeps its other edge, 100 that it is never translated.
/// Font sizes are device-independent pixels, written as <pixelsize> or, as Qt Designer does, as
/// <pointsize>.
class InterfaceFiles {
public:
    /// The languages that the user wants, the most wanted first; English is always the last.
    InterfaceFiles(std::string resourceFolder, const std::vector<std::string>& languages);
    InterfaceFiles(const InterfaceFiles&) = delete;
    InterfaceFiles& operator=(const InterfaceFiles&) = delete;
    ~InterfaceFiles();

    /// Makes the widgets that the files name so; made by Widget(QWidget* parent).
    template <class Widget>
    void registerWidget(const char* className) {
        addFactory(className, [](QWidget* parent) -> QWidget* { return new Widget(parent); });
    }

    /// Null when the file is missing or broken.
    [[nodiscard]] std::unique_ptr<QWidget> load(const std::string& name,
                                                InterfaceOwner* owner = nullptr);

    /// The same of an interface without a file name, whose owner names it; without a name it stays
    /// as it is. Texts that are the language's already are only given their room.
    [[nodiscard]] std::unique_ptr<QWidget>
    loadFrom(QIODevice& file, InterfaceOwner* owner = nullptr,
             TranslationNeeded needed = TranslationNeeded::Yes);

    /// The language of the program's texts, such as "de"; "en" when none of the user's is there.
    [[nodiscard]] const std::string& language() const { return m_tables.language(); }
    [[nodiscard]] bool isRightToLeft() const;

private:
    using Factory = QWidget* (*)(QWidget* parent);

    void addFactory(const char* className, Factory factory);
    std::unique_ptr<QWidget> build(QIODevice& file);
    void localize(QWidget& widget, const std::string& name, InterfaceOwner* owner,
                  TranslationNeeded needed) const;

    InterfaceTables m_tables;
    std::unique_ptr<InterfaceBuilder> m_builder;
};

} // namespace plenzo
