#pragma once

#include <QHeaderView>
#include <QTreeView>

// A tree with one column. It is as wide as the view, so that a chosen row is marked from edge to
// edge, or as the names in view where these are wider, so that they can be scrolled to and none is
// cut off.
class ContainerView : public QTreeView
{
public:
    explicit ContainerView(QWidget* parent = nullptr) : QTreeView(parent)
    {
        header()->setStretchLastSection(false);
        header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        header()->setResizeContentsPrecision(0);
    }

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        header()->setMinimumSectionSize(viewport()->width());
        QTreeView::resizeEvent(event);
    }
};
