#pragma once

#include "tests/support/treewriter.h"

/* The example modules, as the ".asn" files beside this one write them. Each function fills an empty
   tree. */

void makeBasic(TreeWriter &w);
void makeStock(TreeWriter &w);
void makeShop(TreeWriter &w, const TreeWriter &stock);
void makeForms(TreeWriter &w, const TreeWriter &stock);
void makeValue(TreeWriter &w, const TreeWriter &stock);
void makeOperations(TreeWriter &w);
