// A library without VYR_SHOW.

int TheAnswer();
int TheAnswer() { return 42; }
