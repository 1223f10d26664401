#include "widgets/wrappinglabel.h"

#include <QPainter>
#include <QStyle>
#include <QTextLayout>
#include <QTextOption>
#include <QtMath>

QString WrappingLabel::shownText() const
{
    // Far longer than any name. A tool that floods its output must not keep the layout busy.
    constexpr int mostCharacters = 10000;
    // QTextLayout starts a new line at a line separator, not at a line end.
    return text().left(mostCharacters).trimmed().replace(QLatin1Char('\n'), QChar::LineSeparator);
}

QTextOption WrappingLabel::textOption() const
{
    QTextOption option(QStyle::visualAlignment(layoutDirection(), alignment()));
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

QSize WrappingLabel::sizeHint() const
{
    // As wide as the longest line, up to the width that is read easily.
    const int width =
        qMin(fontMetrics().size(0, shownText()).width(), 80 * fontMetrics().averageCharWidth());
    return {width, heightForWidth(width)};
}

QSize WrappingLabel::minimumSizeHint() const
{
    return fontMetrics().size(Qt::TextSingleLine, QStringLiteral("mmmmmmmm"));
}

int WrappingLabel::heightForWidth(int width) const
{
    QTextLayout layout(shownText(), font(), this);
    layout.setTextOption(textOption());
    layout.beginLayout();
    qreal height = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        height += line.height();
    }
    layout.endLayout();
    const QMargins margins = contentsMargins();
    return qMax(qCeil(height), fontMetrics().height()) + margins.top() + margins.bottom();
}

void WrappingLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(QRectF(contentsRect()), shownText(), textOption());
}
