package com.korvane.ledger;
public class BonusInterestRule extends InterestRule {  //@ extends Account.InterestRule
    @Override long apply(long [!balance:long]) {
        double [!bonus:double] = [rate] * 1.5;
        return Math.round([balance] * [bonus]);
    }
}
