select b.FParentID from t_Item  a inner join t_Item b on a.FItemID=b.FParentID 
where a.FItemClassID=5 and b.FItemID not in (1,2) and charindex(b.FRightUserID,'12')>0 
 Union 
 select FItemID from t_Item where fItemID  in (1,2) and FParentID>0
