// The message functions that images of the handset's platform call, over this system's object runtime.
#pragma once

extern "C" {
// Each looks the method up and goes on in it with the registers as they came. To null: the answer is zero in every
// register that could hold one; a result in memory is left as it is.
void substrate_msgSend();
void substrate_msgSend_stret();
void substrate_msgSendSuper();
void substrate_msgSendSuper_stret();
}
