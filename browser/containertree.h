#pragma once

#include "browser/cnleaf.h"

#include <QList>
#include <QStringView>

// The tree of containers: distinguished names by their components, from the right to the left.

// A new level, never deleted: deleteLeaves() only detaches it (docs/known-behaviour.md).
Level* newLevel();

// Inserts a name below a level: its last component there, each further one below the one to its
// right. Returns the level of its first component; null when an empty component has ended the name.
// *prefixDiffers is set when a component has the value of one that is there, but another prefix:
// the one that is there stays.
Level* insertName(QStringView name, Level* level, bool* prefixDiffers);

// Inserts names into an empty tree, with the same result as inserting them one by one.
void insertNames(const QList<QStringView>& names, Level* top);

// Writes a level to the debug log, a line for each leaf, a tab deeper for each level. The program
// does not call it; it is for finding out what a listing has become.
void dumpTree(const Level& level, const QString& indent);

// Deletes all leaves below a level, whose entries then dangle. The maps below are not deleted.
void deleteLeaves(Level* level);
