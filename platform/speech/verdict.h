#pragma once

#include "platform/recogniser.h"
#include "platform/speech/decoder.h"

namespace homewarden::speech {

// How sure one can be that the words were said; the higher the surer: the score of the worst word.
// Among people who talk every word scores lower, whoever says it, so the contrast of the speech in
// decibels (EndPointer) counts too. Far below every limit for no words.
double certainty(const HeardWords& words, double contrast);

// Whether a command of this certainty is carried out, asked about or refused.
Heard::Verdict judge(double certainty, Strictness strictness);

}  // namespace homewarden::speech
