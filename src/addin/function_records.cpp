#include "addin/function_records.h"

namespace metrify {

constinit XlFunctionRecord metrify_record{
    .narrowEntry = "Metrify_4",
    .wideEntry = "Metrify_12",
    .narrowType = "RBCC",
    .wideType = "UBC%C%$",
    .functionName = u"Metrify",
    .wideArgumentNames = u"Val,InUnits,OutUnits",
    .macroType = 1,
    .wideCategory = u"Metrify",
    .wideDescription = u"Converts Val from InUnits to OutUnits",
    .wideArgumentHelp = u"Input value expressed in InUnits to be converted to Outunits (number)\0"
                        u"Units of the input value (text)\0"
                        u"Units to convert input value to (text)\0",
    .signature =
        u"{Metrify,,,Converts Val from InUnits to OutUnits,Metrify,1,1,U,"
        u"{{0,{Val,Double,0,,Input value expressed in InUnits to be converted to Outunits (number),,,,}},"
        u"{0,{InUnits,String,0,,Units of the input value (text),,,,}},"
        u"{0,{OutUnits,String,0,,Units to convert input value to (text),,,,}}},{},3,,0,0,,,,0,0}",
};

} // namespace metrify
