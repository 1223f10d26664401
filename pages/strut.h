#pragma once

#include <QLayoutItem>
#include <QWidget>

// Takes as much room in a layout as a widget that lies in another one, and shows nothing: two
// layouts, one on top of the other, with each other's widgets as struts have the same rows and
// columns. The widget must outlive the layout.
class Strut : public QLayoutItem
{
public:
    explicit Strut(QWidget* widget) : item(widget) {}

    QSize sizeHint() const override
    {
        return item.sizeHint();
    }
    QSize minimumSize() const override
    {
        return item.minimumSize();
    }
    QSize maximumSize() const override
    {
        return item.maximumSize();
    }
    Qt::Orientations expandingDirections() const override
    {
        return item.expandingDirections();
    }
    bool hasHeightForWidth() const override
    {
        return item.hasHeightForWidth();
    }
    int heightForWidth(int width) const override
    {
        return item.heightForWidth(width);
    }
    bool isEmpty() const override
    {
        return false;
    }
    QRect geometry() const override
    {
        return place;
    }
    void setGeometry(const QRect& rectangle) override
    {
        place = rectangle;
    }

private:
    QWidgetItem item;
    QRect place;
};
