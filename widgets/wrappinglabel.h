#pragma once

#include <QLabel>

class QTextOption;

// A label for a text that comes from outside, such as a domain: it breaks also within a word that
// is wider than the label, and leaves out blanks and line ends at both ends. Plain text only.
class WrappingLabel : public QLabel
{
public:
    using QLabel::QLabel;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString shownText() const; // with line separators for line ends
    QTextOption textOption() const;
};
