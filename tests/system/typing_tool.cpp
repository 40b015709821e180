// A window with a field, as other programs have it. Prints, a line each, what becomes of it:
// "active", "inactive", and "text" with what is in the field.
#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <cstdio>
#include <string>

namespace {

void print(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
}

class Field final : public QLineEdit {
protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::WindowActivate) {
            print("active");
        } else if (event->type() == QEvent::WindowDeactivate) {
            print("inactive");
        }
        return QLineEdit::event(event);
    }
};

} // namespace

int main(int argumentCount, char** arguments) {
    const QApplication application(argumentCount, arguments);
    Field field;
    QObject::connect(&field, &QLineEdit::textChanged,
                     [](const QString& text) { print("text " + text.toStdString()); });
    field.setWindowTitle("Typing");
    field.resize(300, 40);
    field.show();
    return QApplication::exec();
}
