#include "localization/interface_builder.h"

#include <QBuffer>
#include <QFont>
#include <QXmlStreamReader>

namespace plenzo {

namespace {

/// The loader would write what it cannot read to the standard error.
bool isWellFormed(const QByteArray& bytes) {
    QXmlStreamReader reader(bytes);
    const bool isInterface = reader.readNextStartElement() && reader.name() == u"ui";
    while (!reader.atEnd()) {
        reader.readNext();
    }
    return isInterface && !reader.hasError();
}

/// A point is a device-independent pixel, whatever the screen says.
void setFontsByPixelSize(QWidget& widget) {
    QFont font = widget.font();
    const bool hasOwnSize = (font.resolveMask() & QFont::SizeResolved) != 0;
    if (hasOwnSize && font.pixelSize() <= 0 && font.pointSize() > 0) {
        font.setPixelSize(font.pointSize());
        widget.setFont(font);
    }
    // Parents first: what they set, their children have by pixels already.
    for (QObject* child : widget.children()) {
        if (auto* const view = qobject_cast<QWidget*>(child)) {
            setFontsByPixelSize(*view);
        }
    }
}

} // namespace

InterfaceBuilder::InterfaceBuilder() {
    setTranslationEnabled(false);
}

void InterfaceBuilder::addFactory(const char* className, Factory factory) {
    m_factories.insert_or_assign(QString::fromUtf8(className), factory);
}

std::unique_ptr<QWidget> InterfaceBuilder::build(QIODevice& file) {
    QByteArray bytes = file.readAll();
    // The loader knows no size in pixels.
    bytes.replace("<pixelsize>", "<pointsize>").replace("</pixelsize>", "</pointsize>");
    if (!isWellFormed(bytes)) {
        return nullptr;
    }
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    std::unique_ptr<QWidget> widget(load(&buffer));
    if (widget) {
        setFontsByPixelSize(*widget);
    }
    return widget;
}

QWidget* InterfaceBuilder::createWidget(const QString& className, QWidget* parent,
                                        const QString& name) {
    const auto factory = m_factories.find(className);
    if (factory == m_factories.end()) {
        return QUiLoader::createWidget(className, parent, name);
    }
    QWidget* const widget = factory->second(parent);
    widget->setObjectName(name);
    return widget;
}

} // namespace plenzo
