// The entities in the texts of the settings file: "&amp;" for "&" and so on. Internal to the
// module.
//
// Each function works on an owned text in place; when something is to be replaced, the text is
// freed and set to the new one.
#pragma once

// The five entities are replaced one after the other, "&amp;" first in both directions. "&amp;lt;"
// is therefore decoded to "<".
void DecodeEntities(char **text);
void EncodeEntities(char **text);

// The parser does not accept a text that begins with ">", "/>" or a quote that is not closed, as a
// decoded text may. Encodes that character, everywhere in such a text.
void MakeTextReadable(char **text);
