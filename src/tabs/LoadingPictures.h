#pragma once
// The pictures a tab shows while its page loads: one per loading band, a
// quarter, half and three quarters of a circle, then the finished page.
#include <QIcon>

// Which picture a loading percent shows: 1 to 4, or 0 to leave the picture
// as it is (a percent of 0, and exactly 76, fall in no band).
int loadingBand(int percent);
// The picture of a page without its own: the theme's, else a drawn sheet. A
// tab has a picture before its first load as during it, so the tab band keeps
// its height and the page is not resized while it loads.
QIcon defaultPagePicture();
// Band 4 is the page picture given.
QIcon loadingPicture(int band, const QIcon& pagePicture);
