// The menus of the table.
#pragma once

class frmCrapTable;
class Menus;

/// Builds the menu bar of the table.
void MakeTableMenus(frmCrapTable* table, Menus& menus);
