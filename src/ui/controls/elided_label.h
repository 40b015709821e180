#pragma once

#include <QLabel>

namespace plenzo {

/// A label of one line that ends in "…" where its text does not fit.
class ElidedLabel final : public QLabel {
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    /// Line breaks and other controls become spaces; of a very long text the beginning is kept.
    void setLine(const QString& text);
    /// Of the whole text, in pixels.
    [[nodiscard]] int textWidth() const;
    [[nodiscard]] bool isElided() const;

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QString elidedText() const;
};

} // namespace plenzo
