 SELECT FStartDate FROM t_PeriodDate WHERE 
 FYear =(SELECT CONVERT(INT, FValue) FROM t_SystemProfile WHERE FCategory = 'IC' AND FKey = 'StartYear' ) AND 
 FPeriod =(SELECT CONVERT(INT, FValue) FROM t_SystemProfile WHERE FCategory = 'IC' AND FKey = 'StartPeriod') 