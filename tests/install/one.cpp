// Includes one generated header alone.
#include "orderscod.ext"
#include "asnapi.h"
#include <cstdlib>
#include <iostream>

int main ()
{
  Message order = {};
  ASNERROR error;
  size_t length;
  BYTE_TYPE *start = asnEncodeNew (encMessage, &order, &length, &error);
  std::cout << sizeof (order.amount) << " " << (start ? length : 0) << std::endl;
  std::free (start);
}
