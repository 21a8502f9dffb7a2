select (max(FLevel) - 1) as MaxLevel from t_Item, t_ItemClass where t_Item.FItemClassID = t_ItemClass.FItemClassID and t_ItemClass.FItemClassID=4
