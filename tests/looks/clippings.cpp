#include "tests/looks/clippings.h"

#include "widgets/wrappinglabel.h"

#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScrollArea>

namespace {

bool isMeasured(const QWidget* widget)
{
    if (!widget->isVisible())
        return false;
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return !label->text().isEmpty() || label->pixmap(Qt::ReturnByValue).width() > 0;
    return widget->inherits("QAbstractButton") || widget->inherits("QLineEdit") ||
           widget->inherits("QProgressBar") || widget->inherits("QTextBrowser") ||
           widget->inherits("QTreeView");
}

// The scroll area that the widget is in; null for none.
QScrollArea* scrollAreaOf(const QWidget* window, const QWidget* widget)
{
    for (auto* area : window->findChildren<QScrollArea*>())
        if (area->viewport()->isAncestorOf(widget))
            return area;
    return nullptr;
}

// The place that a widget takes, as seen from another one: that of its scroll area when the other
// is outside of that.
QRect placeBeside(const QWidget* other, const QWidget* widget)
{
    const QWidget* window = widget->window();
    const QScrollArea* area = scrollAreaOf(window, widget);
    if (area != nullptr && area != scrollAreaOf(window, other))
        widget = area;
    return {widget->mapTo(window, QPoint()), widget->size()};
}

int widestWord(const QWidget* widget, const QString& text)
{
    int widest = 0;
    for (const QString& word : text.split(QRegularExpression("\\s+")))
        widest = qMax(widest, widget->fontMetrics().horizontalAdvance(word));
    return widest;
}

// Whether lines of the text are missing. They are counted here, as the height that the widget asks
// for may be wrong. Broken anywhere, the text has the fewest lines that it can have.
bool lacksLines(const QWidget* widget, const QString& text)
{
    const QFontMetrics metrics = widget->fontMetrics();
    const QRect room(0, 0, widget->width(), QWIDGETSIZE_MAX);
    const QRect lines = metrics.boundingRect(room, Qt::TextWrapAnywhere, text.trimmed());
    return widget->height() + metrics.height() / 2 < lines.height();
}

void measureSize(const QWidget* widget, const QSize& needed, QStringList* found)
{
    if (widget->width() < needed.width())
        *found << QString("width is %1, needs %2").arg(widget->width()).arg(needed.width());
    if (widget->height() < needed.height())
        *found << QString("height is %1, needs %2").arg(widget->height()).arg(needed.height());
}

// The text wraps: its words have to fit into the width, unless the label breaks them, and its lines
// into the height.
void measureWrapped(const QWidget* widget, const QString& text, QStringList* found)
{
    const bool breaksWords = dynamic_cast<const WrappingLabel*>(widget) != nullptr;
    const int height = widget->heightForWidth(widget->width());
    measureSize(widget, {breaksWords ? 0 : widestWord(widget, text), height}, found);
    if (widget->height() >= height && lacksLines(widget, text))
        *found << QString("it has no room for all lines");
}

// An edit scrolls what is typed, but has to show a useful part of it and all of its placeholder.
QSize neededBy(const QLineEdit* edit)
{
    const int frame = edit->minimumSizeHint().width() - edit->fontMetrics().maxWidth();
    const int part = edit->fontMetrics().averageCharWidth() * 8;
    const int placeholder = edit->fontMetrics().horizontalAdvance(edit->placeholderText());
    return {qMax(edit->minimumSizeHint().width(), frame + qMax(part, placeholder)),
            edit->sizeHint().height()};
}

// All of the widget has to be seen. What is beyond a scroll area's view can be scrolled to; then it
// is the area that has to be seen.
void measurePlace(const QWidget* widget, QStringList* found)
{
    for (const QWidget* parent = widget; !parent->isWindow();) {
        parent = parent->parentWidget();
        const auto* area = qobject_cast<const QScrollArea*>(parent->parentWidget());
        if (area != nullptr)
            widget = parent = area;
        else if (!parent->rect().contains({widget->mapTo(parent, QPoint()), widget->size()}))
            *found << QString("it lies partly outside of ") + parent->objectName();
    }
}

QStringList measured(const QWidget* widget)
{
    QStringList found;
    const QString text = widget->property("text").toString();
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget))
        measureSize(widget, neededBy(edit), &found);
    else if (!widget->inherits("QLabel") && !widget->inherits("QAbstractButton"))
        measureSize(widget, widget->minimumSizeHint(), &found);
    else if (widget->hasHeightForWidth())
        measureWrapped(widget, text, &found);
    else if (!text.isEmpty())
        measureSize(widget, widget->sizeHint(), &found);
    measurePlace(widget, &found);
    return found;
}

QString described(const QWidget* widget)
{
    return QString("%1 %2").arg(QLatin1String(widget->metaObject()->className()),
                                widget->objectName());
}

} // namespace

QStringList clippings(const QWidget* window)
{
    QList<QWidget*> widgets;
    for (QWidget* widget : window->findChildren<QWidget*>())
        if (isMeasured(widget) && widget->window() == window)
            widgets << widget;

    QStringList found;
    for (int i = 0; i < widgets.size(); ++i) {
        for (const QString& finding : measured(widgets.at(i)))
            found << described(widgets.at(i)) + QString(": ") + finding;
        for (int j = i + 1; j < widgets.size(); ++j) {
            const bool nested = widgets.at(i)->isAncestorOf(widgets.at(j)) ||
                                widgets.at(j)->isAncestorOf(widgets.at(i));
            if (!nested && placeBeside(widgets.at(j), widgets.at(i))
                               .intersects(placeBeside(widgets.at(i), widgets.at(j))))
                found << described(widgets.at(i)) + QString(" overlaps with ") +
                             described(widgets.at(j));
        }
    }
    return found;
}
