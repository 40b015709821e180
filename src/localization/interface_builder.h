#pragma once

#include <QString>
#include <QUiLoader>
#include <QWidget>
#include <map>
#include <memory>

class QIODevice;

namespace plenzo {

/// Makes the widgets of an interface file as they were designed, those of our own classes among
/// them.
class InterfaceBuilder final : public QUiLoader {
public:
    using Factory = QWidget* (*)(QWidget* parent);

    InterfaceBuilder();

    void addFactory(const char* className, Factory factory);

    /// Null when the file is broken.
    [[nodiscard]] std::unique_ptr<QWidget> build(QIODevice& file);

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override;

private:
    std::map<QString, Factory> m_factories;
};

} // namespace plenzo
