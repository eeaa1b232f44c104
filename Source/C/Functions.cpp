// The functions that Tools/generate-c.py writes from the public headers.

#include "C/Call.h"
#include "Data/Exports.h"
#include "Data/Interfaces/IAllowedValue.h"
#include "Data/Interfaces/IArray.h"
#include "Data/Interfaces/IColumn.h"
#include "Data/Interfaces/IConfiguration.h"
#include "Data/Interfaces/IConstrainedValue.h"
#include "Data/Interfaces/IDateTime.h"
#include "Data/Interfaces/IEncoding.h"
#include "Data/Interfaces/IEnum.h"
#include "Data/Interfaces/IHashing.h"
#include "Data/Interfaces/IHtmlDocument.h"
#include "Data/Interfaces/IJsonDocument.h"
#include "Data/Interfaces/IObjectList.h"
#include "Data/Interfaces/IProperties.h"
#include "Data/Interfaces/IRow.h"
#include "Data/Interfaces/IRtfDocument.h"
#include "Data/Interfaces/ISchema.h"
#include "Data/Interfaces/ISecureString.h"
#include "Data/Interfaces/IString.h"
#include "Data/Interfaces/ITable.h"
#include "Data/Interfaces/ITableHeader.h"
#include "Data/Interfaces/IValue.h"
#include "Data/Interfaces/IVariantDictionary.h"
#include "Data/Interfaces/IVariantList.h"
#include "Data/Interfaces/IVariantPairList.h"
#include "Data/Interfaces/IXmlDocument.h"

using namespace Data;
using namespace Data::c;
using namespace Data::Interfaces;
using Core::IObject;

#include "C/Generated.inc"
