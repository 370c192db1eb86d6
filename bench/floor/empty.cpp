// What starting a program costs.
int main() {}
