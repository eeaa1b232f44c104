#include "Data/Exports.h"
#include "Documents/HtmlDocumentImpl.h"
#include "Documents/JsonDocumentImpl.h"
#include "Documents/RtfDocumentImpl.h"
#include "Documents/XmlDocumentImpl.h"
#include "Exports/Factory.h"

using namespace Data::Interfaces;
using namespace Data::impl;

bool Data_CreateJsonDocument(IJsonDocument** out) { return Create<JsonDocumentImpl>(out); }
bool Data_CreateXmlDocument(IXmlDocument** out) { return Create<XmlDocumentImpl>(out); }
bool Data_CreateHtmlDocument(IHtmlDocument** out) { return Create<HtmlDocumentImpl>(out); }
bool Data_CreateRtfDocument(IRtfDocument** out) { return Create<RtfDocumentImpl>(out); }
