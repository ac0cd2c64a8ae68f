// Uses an exported instantiation (ZtDynArray<char>) and a client instantiation (ZtDynArray<int>).
#include <zt/zt.h>

int main() {
  ZtDynArray<char> text;
  text << 'c' << 'a' << 'b';
  text.Sort(true);
  ZtDynArray<int> numbers;
  numbers << 3 << 1 << 2;
  numbers.Sort(false);
  const bool ok = text.GetAt(0) == 'a' && numbers.GetAt(0) == 3 && text.GetSpaceSize() == 11;
  return ok ? 0 : 1;
}
