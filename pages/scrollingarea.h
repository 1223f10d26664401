#pragma once

#include <QApplication>
#include <QScrollArea>

// Scrolls what has no room in it, as long texts in a large font may not have on a page of a fixed
// size. Apart from its scroll bar it is not seen, and the keyboard passes through it: what gets the
// focus comes into view.
class ScrollingArea : public QScrollArea
{
public:
    explicit ScrollingArea(QWidget* parent = nullptr) : QScrollArea(parent)
    {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setWidgetResizable(true);
        viewport()->setAutoFillBackground(false);
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
            if (now != nullptr && widget()->isAncestorOf(now))
                ensureWidgetVisible(now);
        });
    }

protected:
    void showEvent(QShowEvent* event) override
    {
        QScrollArea::showEvent(event);
        // Filled by setWidget().
        widget()->setAutoFillBackground(false);
    }
};
