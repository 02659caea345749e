#include "dictionarytext.h"

#include <cfloat>
#include <cstdio>
#include <cstring>
#include <sstream>

#include "formats.h"
#include <transspace/zorb/datasource.h>

namespace savfiletest {

namespace {

std::string number(double d) {
  std::uint64_t bits;
  std::memcpy(&bits, &d, sizeof bits);
  if (bits == 0xFFEFFFFFFFFFFFFEull) return "LOWEST";
  if (d == DBL_MAX) return "HIGHEST";
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.15g", d);
  return buf;
}

std::string stringValue(OBS const* obs, int width) {
  std::string s(reinterpret_cast<char const*>(obs), static_cast<std::size_t>(width));
  while (!s.empty() && s.back() == ' ') s.pop_back();
  return "\"" + s + "\"";
}

}  // namespace

std::string formatName(int type, int width, int decimals) {
  std::string s = savfile::formatTypeName(type) + std::to_string(width);
  if (type != 1 && type != 2) s += "." + std::to_string(decimals);
  return s;
}

std::string missingText(ZORB_DataSource const& ds, int index) {
  ZORB_Variable const& v = ds.GetVariable(index);
  OBS const* p[3];
  int n = v.GetMissingValues(p[0], p[1], p[2]);
  if (n == 0) return "";
  std::string s;
  int count = n < 0 ? -n : n;
  for (int i = 0; i < count; ++i) {
    std::string value = v.GetType() ? stringValue(p[i], v.GetType()) : number(p[i]->f);
    if (n < 0 && i == 1) {
      s += " THRU " + value;
    } else {
      s += (i ? ", " : "") + value;
    }
  }
  return s;
}

std::string dictionaryText(ZORB_DataSource const& ds) {
  std::ostringstream out;
  out << "rows " << ds.RowCount() << "\n";
  out << "weight " << (ds.GetWeightVarIndex() >= 0 ? ds.GetVariable(ds.GetWeightVarIndex()).GetName() : "-") << "\n";
  char ts[32];
  std::snprintf(ts, sizeof ts, "%.0f", ds.GetTimestamp());
  out << "timestamp " << ts << "\n";
  for (int i = 0; i < ds.ColumnCount(); ++i) {
    ZORB_Variable const& v = ds.GetVariable(i);
    int t, w, d;
    v.GetFormatEx(t, w, d);
    std::string print = formatName(t, w, d);
    v.GetWriteFormatEx(t, w, d);
    std::string write = formatName(t, w, d);
    out << "var " << v.GetName() << " type=" << v.GetType() << " print=" << print << " write=" << write
        << " measure=" << v.GetMeasurementLevel() << " align=" << v.GetAlignment()
        << " width=" << v.GetDisplayWidth() << "\n";
    if (v.GetLabel()) out << "  label \"" << v.GetLabel() << "\"\n";
    std::string missing = missingText(ds, i);
    if (!missing.empty()) out << "  missing " << missing << "\n";
    ZORB_ValueLabelMap labels(v.GetValueLabels());
    char const* label;
    if (v.GetType() == 0) {
      double value;
      while (labels.GetNextPair(value, label)) out << "  value " << number(value) << " \"" << label << "\"\n";
    } else {
      std::string value;
      while (labels.GetNextPair(value, label)) {
        while (!value.empty() && value.back() == ' ') value.pop_back();
        out << "  value \"" << value << "\" \"" << label << "\"\n";
      }
    }
    DatasourceAttributes const& a = v.GetAttributes();
    for (unsigned long k = 0; k < a.Size(); ++k) {
      out << "  attribute " << a.Name(k);
      for (auto const& value : a.Values(k)) out << " '" << value << "'";
      out << "\n";
    }
  }
  DatasourceAttributes const& a = ds.GetAttributes();
  for (unsigned long k = 0; k < a.Size(); ++k) {
    out << "attribute " << a.Name(k);
    for (auto const& value : a.Values(k)) out << " '" << value << "'";
    out << "\n";
  }
  for (auto const& set : VariableSets(ds, PlainVariableSets)) {
    out << "varset " << set.GetName(VariableSet::AsStored) << ":";
    for (auto const& n : set.GetVariableNames(VariableSet::AsStored)) out << " " << n;
    out << "\n";
  }
  for (auto const& set : VariableSets(ds, MultipleResponseSets)) {
    out << "mrset " << set.GetName(VariableSet::AsStored) << " type=" << set.GetType() << " label=\""
        << set.GetLabel() << "\" counted=\"" << set.GetValue() << "\" categoryLabels="
        << set.qUseVariableCategoryLabels() << " labelByVariable=" << set.qLabelSetByVariable() << ":";
    for (auto const& n : set.GetVariableNames(VariableSet::AsStored)) out << " " << n;
    out << "\n";
  }
  for (int type = 0; type < 100; ++type) {
    if (!ds.HasExtension(type)) continue;
    ZORB_DataSource::Extension e(ds, type);
    out << "extension " << type << " size=" << e.ElementSize() << " length=" << e.Length() << "\n";
  }
  return out.str();
}

}  // namespace savfiletest
