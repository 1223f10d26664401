#include "tests/looks/places.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QMetaEnum>

namespace {

QString fontOf(const QWidget* widget)
{
    const QFont font = widget->font();
    return QString::number(font.pointSize()) + (font.bold() ? QString(" bold") : QString());
}

QString stateOf(const QWidget* widget)
{
    QStringList state;
    if (!widget->isEnabled())
        state << QString("disabled");
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        if (button->isChecked())
            state << QString("checked");
    }
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        state << QString::fromLatin1(
            QMetaEnum::fromType<Qt::Alignment>().valueToKeys(label->alignment()));
        if (label->wordWrap())
            state << QString("wraps");
        if (label->buddy() != nullptr)
            state << QString("of ") + label->buddy()->objectName();
    }
    if (!widget->accessibleName().isEmpty())
        state << '"' + widget->accessibleName() + '"';
    return state.join(", ");
}

// Its name in the form, or its class when it has none.
QString nameOf(const QWidget* widget)
{
    return widget->objectName().isEmpty() ? QString::fromLatin1(widget->metaObject()->className())
                                          : widget->objectName();
}

QString placeOf(const QWidget* widget)
{
    const QPoint corner = widget->mapTo(widget->window(), QPoint());
    return QString("%1 %2,%3 %4x%5 %6 %7")
        .arg(nameOf(widget))
        .arg(corner.x())
        .arg(corner.y())
        .arg(widget->width())
        .arg(widget->height())
        .arg(fontOf(widget), stateOf(widget))
        .trimmed();
}

} // namespace

QString layoutOf(const QString& scene)
{
    QApplication::setFont(QFont("DejaVu Sans", 13));
    const auto opened = Scenes::open(scene);
    QCoreApplication::processEvents();
    const QWidget* window = opened->window();
    QStringList places{QString("\"%1\" %2x%3")
                           .arg(window->windowTitle())
                           .arg(window->width())
                           .arg(window->height())};
    for (const auto* widget : window->findChildren<QWidget*>()) {
        if (widget->isVisible())
            places << placeOf(widget);
    }
    return places.join('\n') + '\n';
}
