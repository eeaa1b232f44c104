// The start of a program without the start-up code of a C runtime.

int main(int count, char** arguments);
int __getmainargs(int* count, char*** arguments, char*** environment, int expand, int* info);
void exit(int code);

int _fltused = 0;  // which the compiler refers to where a program uses floating-point numbers

void start(void) {
  int count = 0, info = 0;
  char **arguments = 0, **environment = 0;
  __getmainargs(&count, &arguments, &environment, 0, &info);
  exit(main(count, arguments));
}
