#pragma once
// Width of the address tool, in twips, for a main window of the given width:
// when the address band shares a line with the main toolbar it takes what is
// left beside that toolbar (at least 3000), else the rest of its own line.
int addressToolWidth(bool sharesLineWithMainBar, int windowWidth, int addressBandLeft);
