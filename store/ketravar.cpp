#include "store/ketravar.h"

MNode mNode;
TNode tNode;
VNode vNode;
TagRec tagRec;
SubRec subRec;
TedRec tedRec;
SNode sNode;

NodePlace recJustRead[REC_STRI8];
std::int64_t workLeft = std::int64_t{1} << 20;

ModRecList &modRecList = *new ModRecList;

ModRec *cMP = nullptr;
Text stxDir;
TimeStamp timeStamp;
