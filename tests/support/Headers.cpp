// Nothing of its own: compiled so that the headers which the tests share are read once.
