#include "localization/interface_files.h"

#include "localization/interface_builder.h"
#include "localization/interface_translator.h"
#include "localization/springs_and_struts.h"

#include <QFile>
#include <QList>
#include <QLocale>
#include <utility>

namespace plenzo {

namespace {

/// The layouts of the widget and of all in it.
void installLayouts(QWidget& widget) {
    SpringsAndStruts::install(widget);
    for (QWidget* view : widget.findChildren<QWidget*>()) {
        SpringsAndStruts::install(*view);
    }
}

} // namespace

InterfaceFiles::InterfaceFiles(std::string resourceFolder,
                               const std::vector<std::string>& languages)
    : m_tables(std::move(resourceFolder), languages),
      m_builder(std::make_unique<InterfaceBuilder>()) {}

InterfaceFiles::~InterfaceFiles() = default;

void InterfaceFiles::addFactory(const char* className, Factory factory) {
    m_builder->addFactory(className, factory);
}

bool InterfaceFiles::isRightToLeft() const {
    return QLocale(QString::fromStdString(language())).textDirection() == Qt::RightToLeft;
}

std::unique_ptr<QWidget> InterfaceFiles::load(const std::string& name, InterfaceOwner* owner) {
    QFile file(QString::fromStdString(m_tables.interfaceFile(name)));
    if (!file.open(QIODevice::ReadOnly)) {
        return nullptr;
    }
    auto widget = build(file);
    if (widget) {
        localize(*widget, name, owner, TranslationNeeded::Yes);
    }
    return widget;
}

std::unique_ptr<QWidget> InterfaceFiles::loadFrom(QIODevice& file, InterfaceOwner* owner,
                                                  TranslationNeeded needed) {
    auto widget = build(file);
    const std::string name = owner != nullptr ? owner->nibNameForLocalizedNib() : std::string();
    if (widget && !name.empty()) {
        localize(*widget, name, owner, needed);
    }
    return widget;
}

std::unique_ptr<QWidget> InterfaceFiles::build(QIODevice& file) {
    auto widget = m_builder->build(file);
    if (!widget) {
        return nullptr;
    }
    if (isRightToLeft()) {
        widget->setLayoutDirection(Qt::RightToLeft);
    }
    installLayouts(*widget);
    if (auto* const layout = SpringsAndStruts::of(widget.get())) {
        layout->layOut();
    }
    return widget;
}

void InterfaceFiles::localize(QWidget& widget, const std::string& name, InterfaceOwner* owner,
                              TranslationNeeded needed) const {
    const InterfaceTables::Found found = m_tables.translationDict(name, needed);
    if (found.dictionary) {
        InterfaceTranslator(*found.dictionary).translate(widget);
        if (auto* const topLevel = dynamic_cast<InterfaceOwner*>(&widget)) {
            topLevel->awakeFromNibAfterLocalization(name);
        }
    }
    if (owner != nullptr && !found.isEnglish) {
        owner->awakeFromNibAfterLocalization(name);
    }
}

} // namespace plenzo
