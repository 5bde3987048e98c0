// The entities in the texts of the settings file: "&amp;" for "&" and so on. Internal to the
// module.
//
// Each function works on an owned text in place; when something is to be replaced, the text is
// freed and set to the new one.
#pragma once

// The five entities, one after the other and "&amp;" first: a text that was encoded twice is
// decoded twice.
void DecodeEntities(char **text);
void EncodeEntities(char **text);

// Encodes what decoding has left and the parser would not read at the beginning of a text: ">",
// alone or in "/>", or a quote that is not closed.
void MakeTextReadable(char **text);
