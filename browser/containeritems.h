#pragma once

#include "browser/cnleaf.h"

class QStandardItem;
class QStandardItemModel;

// The items that show a tree of containers, none of which can be edited by the user.

// Appends an item for each leaf of a level, with all below, to an item.
void appendItems(const Level& level, QStandardItem* parent);

// Deletes a model's items from the innermost outwards: an item that is deleted with all below it
// deletes its children by recursion, which overflows the stack on a very deep tree.
void deleteItems(QStandardItemModel* model);
