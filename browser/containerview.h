#pragma once

#include <QHeaderView>
#include <QTreeView>

// A tree whose one column is as wide as the view, so that a chosen row is marked from edge to edge,
// or as wide as the names in view, so that deep ones can be scrolled to and none is cut off.
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
